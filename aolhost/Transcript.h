#pragma once
// Who said what, one record a line, written at once: time TAB kind TAB who TAB text, in UTF-8.
#include <string>
#include <string_view>

namespace aolhost {

class Transcript {
public:
    void open(const std::wstring& path) { path_ = path; }
    void add(std::wstring_view kind, std::wstring_view who, std::wstring_view text) const;

private:
    std::wstring path_;
};

} // namespace aolhost

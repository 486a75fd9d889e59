#pragma once
// What AOL's windows are called in each edition and version.
#include "aolhost/Options.h"

#include <string>

namespace aolhost {

class Words {
public:
    Words() = default;
    Words(Edition edition, int version) : edition_(edition), version_(version) {}

    std::wstring frame() const;
    std::wstring product() const;
    std::wstring aboutItem() const;
    std::wstring writeMail() const;
    std::wstring signOnWindow() const;
    std::wstring signOffWindow() const;
    std::wstring welcome(const std::wstring& name) const;
    std::wstring attach() const;
    std::wstring attachDialog() const;

    std::wstring imFrom(const std::wstring& name, bool unread, bool plainFrench) const;
    std::wstring imTo(const std::wstring& name) const;
    /// An IM of someone on the internet; before version 6 it looks like any other.
    std::wstring internetFrom(const std::wstring& name, bool unread) const;
    std::wstring internetUser() const;
    std::wstring sendIm() const;
    std::wstring respond() const;
    std::wstring available() const;
    std::wstring imsSwitched(bool on) const;

    std::wstring reply() const;
    std::wstring replyAll() const;
    std::wstring forward() const;
    std::wstring forwardPrefix() const;
    std::wstring send() const;
    std::wstring memberProfile() const;
    std::wstring findChat() const;
    std::wstring guest() const;
    wchar_t findLetter() const;

    /// One of the plain words of menus and labels, by its English text; the English one where the
    /// edition has no other.
    std::wstring tr(const wchar_t* english) const;

    bool german() const { return edition_ == Edition::germany; }
    bool french() const { return edition_ == Edition::france; }

private:
    std::wstring pick(const wchar_t* english, const wchar_t* germanText,
                      const wchar_t* frenchText) const;
    Edition edition_ = Edition::unitedStates;
    int version_ = 5;
};

} // namespace aolhost

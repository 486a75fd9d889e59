#pragma once
// Hot words: the user is told when one is said in the room. Pure.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// The first of the words that the message holds; blank words are passed over.
std::optional<std::wstring> findHotWord(std::wstring_view message,
                                        const std::vector<std::wstring>& words, bool caseSensitive);

/// Lets one alert through every ten seconds. `ms` is a tick count that may wrap.
class clsAlertLimit {
public:
    bool mayAlert(std::uint32_t ms);

private:
    std::optional<std::uint32_t> last_;
};

} // namespace velora

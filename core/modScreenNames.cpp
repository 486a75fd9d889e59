#include "core/modScreenNames.h"

#include "base/text.h"
#include "base/trap.h"
#include "core/modCaptions.h"

#include <algorithm>

namespace velora {

namespace {

constexpr char kModule[] = "modScreenNames";
constexpr std::size_t kShortest = 3, kLongest = 16;

// AOL's names know no other letters than these, whatever the system's language.
bool isLetter(wchar_t c)
{
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}

bool isNameCharacter(wchar_t c)
{
    return isLetter(c) || (c >= L'0' && c <= L'9') || c == L' ';
}

std::wstring_view guestName(int edition)
{
    switch (edition) {
    case kGermany: return L"Gast";
    case kFrance: return L"Invit";
    default: return L"Guest";
    }
}

} // namespace

bool IsScreenName(std::wstring_view text)
{
    return text.size() >= kShortest && text.size() <= kLongest && isLetter(text.front())
           && std::all_of(text.begin(), text.end(), isNameCharacter);
}

std::vector<std::wstring> screenNamesInIndex(std::string_view bytes, int edition)
{
    return trap(
        kModule,
        [&] {
            std::vector<std::wstring> names;
            std::vector<std::wstring> keys{screenNameKey(guestName(edition))};
            // The first piece has no NUL before it and the last none after it.
            std::size_t start = bytes.find('\0');
            while (start != bytes.npos && names.size() < kMostScreenNames) {
                const std::size_t end = bytes.find('\0', start + 1);
                if (end == bytes.npos)
                    break;
                const std::string_view piece = bytes.substr(start + 1, end - start - 1);
                start = end;
                if (piece.size() > kLongest)
                    continue;
                const std::wstring run = from1252(piece);
                const std::wstring name = trim(run);
                const std::wstring key = screenNameKey(name);
                if (!IsScreenName(run) || !IsScreenName(name)
                    || std::find(keys.begin(), keys.end(), key) != keys.end())
                    continue;
                names.push_back(name);
                keys.push_back(key);
            }
            return names;
        },
        std::vector<std::wstring>{});
}

bool onlyNewUser(const std::vector<std::wstring>& names)
{
    return names.size() == 1 && screenNameKey(names.front()) == L"newuser";
}

std::wstring welcomedName(std::wstring_view caption)
{
    const std::size_t comma = caption.find(L',');
    if (comma == caption.npos)
        return {};
    const std::wstring_view rest = caption.substr(comma + 1);
    return trim(rest.substr(0, rest.find(L'!')));
}

} // namespace velora

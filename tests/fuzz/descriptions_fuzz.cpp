// Description files of older versions: whatever bytes they hold, what comes out can be stored, and
// is a mail's text without markup of its own.
#include "base/text.h"
#include "fuzz/fuzz.h"
#include "sounds/modDescImport.h"
#include "sounds/modDescMail.h"

#include <set>

using namespace velora;
using fuzz::require;

namespace {

bool visible(const std::wstring& text)
{
    for (const wchar_t c : text)
        if (c < L' ')
            return false;
    return !text.empty() && text.front() != L' ';
}

std::size_t count(const std::wstring& text, wchar_t c)
{
    std::size_t found = 0;
    for (const wchar_t one : text)
        found += one == c;
    return found;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = decodeFileText(fuzz::bytesOf(data, size));
    const OldDescriptions old = parseOldDescriptions(text);
    require(old.records.size() + old.skipped <= splitLines(text).size());
    std::set<std::wstring> names;
    for (const Description& record : old.records) {
        require(visible(record.fileName) && visible(record.comments));
        require(record.fileName.find_first_of(L"\\/") == std::wstring::npos);
        require(names.insert(lower(record.fileName)).second);
        require(cutToSizes(record) == record);
        require(toUtf16le(record.comments).size() <= 2 * 255);
    }
    const std::size_t bare = count(descriptionMail(L"", {}).html, L'<');
    const std::size_t limit = size % 7 == 0 ? 900 : kLongestMail;
    const PrintedList mail = descriptionMail(text, old.records, limit);
    require(mail.entries <= old.records.size());
    // The head names the list, whatever its length.
    if (mail.entries > 0)
        require(mail.html.size() <= limit);
    require(count(mail.html, L'<') == bare + 9 * mail.entries);
    return 0;
}

#include "sounds/modDescMail.h"

#include <utility>

namespace velora {
namespace {

constexpr std::wstring_view kHeading =
    L"Print Wav Descriptions</FONT><FONT SIZE=3 PTSIZE=10></I><br>";

constexpr std::pair<const wchar_t*, std::wstring Description::*> kLabels[] = {
    {L"Title:", &Description::title}, {L"Artist:", &Description::artist},
    {L"Album:", &Description::album}, {L"Comments:", &Description::comments},
    {L"Genre:", &Description::genre},
};

std::wstring mailRecord(const Description& record)
{
    std::wstring text = L"<B>" + printedText(record.fileName) + L"</B><br>";
    for (const auto& [label, value] : kLabels)
        text += std::wstring(label) + L" " + printedText(record.*value) + L"<br>";
    return text + L"<br>";
}

} // namespace

PrintedList descriptionMail(std::wstring_view listName, const std::vector<Description>& records,
                            std::size_t limit)
{
    return printedList(
        listName, kHeading, records.size(), [&](std::size_t i) { return mailRecord(records[i]); },
        limit);
}

} // namespace velora

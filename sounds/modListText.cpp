#include "sounds/modListText.h"

#include "sounds/modSoundLine.h"

namespace velora {
namespace {

constexpr std::wstring_view kHeading = L"Print Wav List</FONT><FONT SIZE=3 PTSIZE=10></I>";

std::wstring mailRow(const ListedSound& sound)
{
    std::wstring row =
        L"<B>" + printedText(sound.name) + L"</B>  " + printedText(sound.size) + L"<BR>";
    if (sound.description)
        for (const auto& [label, value] : describedFields(
                 *sound.description, {L"Title", L"Artist", L"Album", L"Year", L"Genre"}))
            row += L"<I>" + label + L" </I>" + printedText(value) + L"<BR>";
    return row;
}

} // namespace

PrintedList listMail(std::wstring_view listName, const std::vector<ListedSound>& sounds,
                     std::size_t limit)
{
    return printedList(
        listName, kHeading, sounds.size(), [&](std::size_t i) { return mailRow(sounds[i]); },
        limit);
}

std::wstring listText(std::wstring_view listName, const std::vector<ListedSound>& sounds)
{
    std::wstring text = L"Velora - " + std::wstring(listName) + L"\r\n";
    for (const ListedSound& sound : sounds) {
        text += L"\r\n" + sound.name + (sound.size.empty() ? L"" : L"  (" + sound.size + L")")
                + L"\r\n";
        const WavDescription described = sound.description.value_or(WavDescription());
        for (const wchar_t* const field : {L"Title", L"Artist", L"Album", L"Comments", L"Genre"})
            text += std::wstring(field) + L": " + descriptionText(described, field, {}) + L"\r\n";
    }
    return text;
}

} // namespace velora

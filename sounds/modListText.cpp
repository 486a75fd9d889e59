#include "sounds/modListText.h"

#include "base/text.h"
#include "sounds/modSoundLine.h"

namespace velora {
namespace {

constexpr std::wstring_view kHead =
    L"<HTML></P><P ALIGN=CENTER><FONT  SIZE=2 PTSIZE=8><B>Velora - </FONT><FONT  COLOR=#0000ff "
    L"SIZE=2 PTSIZE=8>";
constexpr std::wstring_view kAfterName =
    L"</FONT><FONT  COLOR=#000000 SIZE=2 PTSIZE=8>:</B>  <I>Print Wav List</FONT><FONT SIZE=3 "
    L"PTSIZE=10></I>";
constexpr std::wstring_view kRule = L"<HR></P><P ALIGN=LEFT><PRE>";
constexpr std::wstring_view kEnd = L"</PRE></HTML>";

/// What a name or tag holds is text, whatever it looks like.
std::wstring escaped(std::wstring_view text)
{
    std::wstring line(text);
    for (wchar_t& c : line)
        if (c < L' ')
            c = L' ';
    return escapeHtml(line);
}

std::wstring mailRow(const ListedSound& sound)
{
    std::wstring row = L"<B>" + escaped(sound.name) + L"</B>  " + escaped(sound.size) + L"<BR>";
    if (sound.description)
        for (const auto& [label, value] : describedFields(
                 *sound.description, {L"Title", L"Artist", L"Album", L"Year", L"Genre"}))
            row += L"<I>" + label + L" </I>" + escaped(value) + L"<BR>";
    return row;
}

} // namespace

ListMail listMail(std::wstring_view listName, const std::vector<ListedSound>& sounds,
                  std::size_t limit)
{
    ListMail mail{std::wstring(kHead) + escaped(listName), 0};
    mail.html.append(kAfterName).append(kRule);
    for (const ListedSound& sound : sounds) {
        const std::wstring row = mailRow(sound);
        if (mail.html.size() + row.size() + kEnd.size() > limit)
            break;
        mail.html += row;
        ++mail.sounds;
    }
    mail.html += kEnd;
    return mail;
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

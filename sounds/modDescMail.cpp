#include "sounds/modDescMail.h"

#include <utility>

namespace velora {
namespace {

constexpr std::wstring_view kHead =
    L"<HTML></P><P ALIGN=CENTER><FONT  SIZE=2 PTSIZE=8><B>Velora - </FONT><FONT  COLOR=#0000ff "
    L"SIZE=2 PTSIZE=8>";
constexpr std::wstring_view kAfterName =
    L"</FONT><FONT  COLOR=#000000 SIZE=2 PTSIZE=8>:</B>  <I>Print Wav Descriptions</FONT><FONT "
    L"SIZE=3 PTSIZE=10></I><br>";
constexpr std::wstring_view kRule = L"<HR></P><P ALIGN=LEFT><PRE>";
constexpr std::wstring_view kEnd = L"</PRE></HTML>";

constexpr std::pair<const wchar_t*, std::wstring Description::*> kLabels[] = {
    {L"Title:", &Description::title}, {L"Artist:", &Description::artist},
    {L"Album:", &Description::album}, {L"Comments:", &Description::comments},
    {L"Genre:", &Description::genre},
};

/// What a field holds is text, whatever it looks like.
std::wstring escaped(std::wstring_view text)
{
    std::wstring out;
    for (const wchar_t c : text)
        switch (c) {
        case L'<': out += L"&lt;"; break;
        case L'>': out += L"&gt;"; break;
        case L'&': out += L"&amp;"; break;
        default: out += c < L' ' ? L' ' : c;
        }
    return out;
}

std::wstring mailRecord(const Description& record)
{
    std::wstring text = L"<B>" + escaped(record.fileName) + L"</B><br>";
    for (const auto& [label, value] : kLabels)
        text += std::wstring(label) + L" " + escaped(record.*value) + L"<br>";
    return text + L"<br>";
}

} // namespace

DescriptionMail descriptionMail(std::wstring_view listName, const std::vector<Description>& records,
                                std::size_t limit)
{
    DescriptionMail mail{std::wstring(kHead) + escaped(listName), 0};
    mail.html.append(kAfterName).append(kRule);
    for (const Description& record : records) {
        const std::wstring text = mailRecord(record);
        if (mail.html.size() + text.size() + kEnd.size() > limit)
            break;
        mail.html += text;
        ++mail.records;
    }
    mail.html += kEnd;
    return mail;
}

} // namespace velora

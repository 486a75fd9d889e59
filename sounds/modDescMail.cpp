#include "sounds/modDescMail.h"

#include "base/text.h"

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

std::wstring mailRecord(const Description& record)
{
    std::wstring text = L"<B>" + escapeHtml(record.fileName) + L"</B><br>";
    for (const auto& [label, value] : kLabels)
        text += std::wstring(label) + L" " + escapeHtml(record.*value) + L"<br>";
    return text + L"<br>";
}

} // namespace

DescriptionMail descriptionMail(std::wstring_view listName, const std::vector<Description>& records,
                                std::size_t limit)
{
    DescriptionMail mail{std::wstring(kHead) + escapeHtml(listName), 0};
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

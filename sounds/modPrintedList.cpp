#include "sounds/modPrintedList.h"

#include "base/text.h"

namespace velora {
namespace {

constexpr std::wstring_view kHead =
    L"<HTML></P><P ALIGN=CENTER><FONT  SIZE=2 PTSIZE=8><B>Velora - </FONT><FONT  COLOR=#0000ff "
    L"SIZE=2 PTSIZE=8>";
constexpr std::wstring_view kAfterName = L"</FONT><FONT  COLOR=#000000 SIZE=2 PTSIZE=8>:</B>  <I>";
constexpr std::wstring_view kRule = L"<HR></P><P ALIGN=LEFT><PRE>";
constexpr std::wstring_view kEnd = L"</PRE></HTML>";

} // namespace

PrintedList printedList(std::wstring_view listName, std::wstring_view heading, std::size_t count,
                        const std::function<std::wstring(std::size_t)>& row, std::size_t limit)
{
    PrintedList list{std::wstring(kHead) + printedText(listName), 0};
    list.html.append(kAfterName).append(heading).append(kRule);
    for (; list.entries < count; ++list.entries) {
        const std::wstring text = row(list.entries);
        if (list.html.size() + text.size() + kEnd.size() > limit)
            break;
        list.html += text;
    }
    list.html += kEnd;
    return list;
}

std::wstring printedText(std::wstring_view text)
{
    std::wstring line(text);
    for (wchar_t& c : line)
        if (c < L' ')
            c = L' ';
    return escapeHtml(line);
}

} // namespace velora

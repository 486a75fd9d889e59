// Reading AOL's text windows where they live: one answer to the program however long the text.
#include "hook/agent/agent.h"
#include "hook/agent/text.h"

#include <richedit.h>

namespace velora::agent {
namespace {

constexpr int kLongestLine = 16000; // characters of one display line
// Room for a line in UTF-16, and behind it for its bytes when the control gives those.
wchar_t g_line[kLongestLine + kLongestLine / 2 + 2];

/// Reads may not nest: the inner one would overwrite the outer one's result.
class Reading {
public:
    explicit Reading(const wire::Command& command, wire::BulkKind kind) : owner_(!g.reading)
    {
        if (!owner_)
            return;
        g.reading = true;
        wire::Bulk& bulk = g.section->bulk;
        bulk.sequence = 0;
        bulk.kind = kind;
        bulk.window = command.window;
        bulk.total = bulk.first = bulk.count = bulk.bytes = bulk.truncated = 0;
    }
    ~Reading()
    {
        if (owner_)
            g.reading = false;
    }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;
    explicit operator bool() const { return owner_; }
    /// The section may have gone while AOL's control was asked.
    std::int32_t done(const wire::Command& command)
    {
        if (!g.section || g.generation != command.generation)
            return wire::kCancelled;
        g.section->bulk.sequence = command.sequence;
        return wire::kDone;
    }

private:
    bool owner_;
};

int ask(HWND edit, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
{
    return static_cast<int>(SendMessageW(edit, message, wParam, lParam));
}

/// Display line `index` into g_line as UTF-16; its length with what stands at its end.
int rawLine(HWND edit, int index, bool unicode)
{
    *reinterpret_cast<WORD*>(g_line) = kLongestLine;
    const auto target = reinterpret_cast<LPARAM>(g_line);
    int units = static_cast<int>(unicode ? SendMessageW(edit, EM_GETLINE, index, target)
                                         : SendMessageA(edit, EM_GETLINE, index, target));
    units = units < 0 ? 0 : units > kLongestLine ? kLongestLine : units;
    if (unicode || units == 0)
        return units;
    auto* bytes = reinterpret_cast<char*>(g_line + kLongestLine);
    CopyMemory(bytes, g_line, static_cast<std::uint32_t>(units));
    return MultiByteToWideChar(CP_ACP, 0, bytes, units, g_line, kLongestLine);
}

bool endsInBreak(const wchar_t* line, int units)
{
    return units > 0
           && (line[units - 1] == L'\r' || line[units - 1] == L'\n' || line[units - 1] == L'\v');
}

bool storeLine(wire::Bulk& bulk, const wchar_t* line, LineEnd end)
{
    const std::uint32_t bytes = sizeof(wire::LineHead) + 2u * static_cast<std::uint32_t>(end.units);
    if (bulk.bytes + bytes > wire::kBulkBytes)
        return false;
    auto* head = reinterpret_cast<wire::LineHead*>(bulk.data + bulk.bytes);
    head->units = static_cast<std::uint16_t>(end.units);
    head->softWrapped = end.softWrapped;
    CopyMemory(head + 1, line, 2u * static_cast<std::uint32_t>(end.units));
    bulk.bytes += bytes;
    ++bulk.count;
    return true;
}

/// Text that WM_GETTEXT gives, straight into the section.
void fetchText(HWND window, wire::Bulk& bulk)
{
    const int most = static_cast<int>(wire::kBulkBytes / 2);
    const int units = ask(window, WM_GETTEXT, most, reinterpret_cast<LPARAM>(bulk.data));
    bulk.total = static_cast<std::uint32_t>(units > 0 ? units : 0);
    bulk.bytes = 2 * bulk.total;
    bulk.truncated = units >= most - 1;
}

/// Keeps units [from, to) of the text in the section.
void cut(wire::Bulk& bulk, int from, int to)
{
    const int total = static_cast<int>(bulk.bytes / 2);
    to = to > total ? total : to;
    from = from < 0 ? 0 : from > to ? to : from;
    MoveMemory(bulk.data, bulk.data + 2 * from, 2u * static_cast<std::uint32_t>(to - from));
    bulk.bytes = 2u * static_cast<std::uint32_t>(to - from);
}

/// The messages above WM_USER answer in the character set that the control was written for, which
/// its window does not tell. The end of what it wrote does: `units` characters and one null of
/// their own width, in data that was filled with 0xCC.
bool wroteWide(const unsigned char* data, int units)
{
    return data[2 * units] == 0 && data[2 * units + 1] == 0;
}

/// Turns `units` characters in the bulk data into UTF-16 when the control wrote bytes.
int widen(wire::Bulk& bulk, int units)
{
    if (units <= 0 || wroteWide(bulk.data, units))
        return units;
    unsigned char* bytes = bulk.data + wire::kBulkBytes - units;
    MoveMemory(bytes, bulk.data, static_cast<std::uint32_t>(units));
    return MultiByteToWideChar(CP_ACP, 0, reinterpret_cast<char*>(bytes), units,
                               reinterpret_cast<wchar_t*>(bulk.data), units);
}

void setUnits(wire::Bulk& bulk, int units)
{
    bulk.total = static_cast<std::uint32_t>(units > 0 ? units : 0);
    bulk.bytes = 2 * bulk.total;
}

/// Where the text ends, in the control's own positions.
int textEnd(HWND edit)
{
    // Rich edits from version 2 on know it at once; asking for the last line walks all of them.
    GETTEXTLENGTHEX how = {GTL_NUMCHARS | GTL_PRECISE, 1200};
    const int length = ask(edit, EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&how));
    if (length > 0)
        return length;
    const int start = ask(edit, EM_LINEINDEX, ask(edit, EM_GETLINECOUNT) - 1);
    return start < 0 ? 0 : start + ask(edit, EM_LINELENGTH, start);
}

void fillForWidth(wire::Bulk& bulk, int units)
{
    FillMemory(bulk.data, 2u * static_cast<std::uint32_t>(units) + 4, 0xCC);
}

constexpr int kLongestRange = static_cast<int>(wire::kBulkBytes / 4);

/// The selection with all its characters, which EM_GETSELTEXT of an ANSI rich edit loses. Rich
/// edits that do not know the flag give another length, plain edits nothing: 0 then.
int wideSelection(HWND edit, wire::Bulk& bulk, int length)
{
    GETTEXTEX how = {};
    how.cb = 2u * static_cast<DWORD>(length) + 2;
    how.flags = GT_SELECTION;
    how.codepage = 1200;
    const int units = ask(edit, EM_GETTEXTEX, reinterpret_cast<WPARAM>(&how),
                          reinterpret_cast<LPARAM>(bulk.data));
    return units == length ? units : 0;
}

} // namespace

std::int32_t readLines(const wire::Command& command)
{
    Reading reading(command, wire::BulkKind::lines);
    if (!reading)
        return wire::kNested;
    wire::Section* const section = g.section;
    wire::Bulk& bulk = section->bulk;
    const HWND edit = windowOf(command.window);
    const bool unicode = IsWindowUnicode(edit);
    const int total = ask(edit, EM_GETLINECOUNT);
    bulk.total = static_cast<std::uint32_t>(total > 0 ? total : 0);
    bulk.first = command.a;
    for (std::uint32_t i = command.a; i < bulk.total && i - command.a < command.b; ++i) {
        const int index = static_cast<int>(i);
        const int units = rawLine(edit, index, unicode);
        const bool last = i + 1 == bulk.total;
        bool hardEnded = false;
        if (!last && !endsInBreak(g_line, units)) {
            const int start = ask(edit, EM_LINEINDEX, index);
            hardEnded = ask(edit, EM_LINEINDEX, index + 1) - start > units;
        }
        if (g.section != section)
            return wire::kCancelled;
        if (!storeLine(bulk, g_line, splitLineEnd(g_line, units, last, hardEnded))) {
            bulk.truncated = 1;
            break;
        }
    }
    return reading.done(command);
}

std::int32_t readText(const wire::Command& command)
{
    Reading reading(command, wire::BulkKind::text);
    if (!reading)
        return wire::kNested;
    fetchText(windowOf(command.window), g.section->bulk);
    return reading.done(command);
}

std::int32_t readTail(const wire::Command& command)
{
    Reading reading(command, wire::BulkKind::text);
    if (!reading)
        return wire::kNested;
    wire::Bulk& bulk = g.section->bulk;
    const HWND edit = windowOf(command.window);
    const int wanted = command.a > static_cast<std::uint32_t>(kLongestRange)
                           ? kLongestRange
                           : static_cast<int>(command.a);
    const int end = textEnd(edit);
    TEXTRANGEW range;
    range.chrg.cpMin = end > wanted ? end - wanted : 0;
    range.chrg.cpMax = end;
    range.lpstrText = reinterpret_cast<wchar_t*>(bulk.data);
    int units = 0;
    if (range.chrg.cpMin < end) {
        fillForWidth(bulk, end - range.chrg.cpMin);
        units = ask(edit, EM_GETTEXTRANGE, 0, reinterpret_cast<LPARAM>(&range));
        units = units > end - range.chrg.cpMin ? end - range.chrg.cpMin : units;
    }
    if (units > 0) {
        setUnits(bulk, widen(bulk, units));
    } else if (end > 0) {
        // A plain edit control knows no ranges.
        fetchText(edit, bulk);
        cut(bulk, static_cast<int>(bulk.total) - wanted, static_cast<int>(bulk.total));
    }
    return reading.done(command);
}

std::int32_t readSelection(const wire::Command& command)
{
    Reading reading(command, wire::BulkKind::text);
    if (!reading)
        return wire::kNested;
    wire::Bulk& bulk = g.section->bulk;
    const HWND edit = windowOf(command.window);
    DWORD from = 0, to = 0;
    ask(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    const int length = to > from ? static_cast<int>(to - from) : 0;
    if (length > kLongestRange)
        return wire::kFull;
    int units = length > 0 ? wideSelection(edit, bulk, length) : 0;
    if (length > 0 && units == 0) {
        fillForWidth(bulk, length);
        units = ask(edit, EM_GETSELTEXT, 0, reinterpret_cast<LPARAM>(bulk.data));
        units = units > length ? length : units;
    }
    if (units > 0) {
        setUnits(bulk, widen(bulk, units));
    } else if (length > 0) {
        fetchText(edit, bulk);
        cut(bulk, static_cast<int>(from), static_cast<int>(to));
    }
    return reading.done(command);
}

} // namespace velora::agent

#pragma once
// What the program and dwspy36.dll, the module that runs inside AOL, say to each other.
//
// A section of shared memory, made by the program for each connection, holds the tables, the queue
// of posted events and the result of the last read. Commands go as WM_COPYDATA from the program to
// the agent's window and are answered by its return value; questions ("may AOL have this message?")
// go as WM_COPYDATA from the agent to the program's event window; all else is put into the queue
// and announced by a posted kDoorbell. Both sides are 32-bit; whoever receives checks magic,
// version and size first. Handles travel as numbers, text as UTF-16 units.
#include <cstddef>
#include <cstdint>

namespace velora::wire {

inline constexpr std::uint32_t kMagic = 0x41474C56; // "VLGA"
inline constexpr std::uint32_t kVersion = 2;

/// The section's name is this, the program's process id and the connection's generation, as
/// "%08lx%08lx".
inline constexpr wchar_t kSectionName[] = L"Local\\velora_agent_";
/// Sent to AOL's frame while the boot hook is on: wParam = process id, lParam = generation.
inline constexpr wchar_t kBootMessage[] = L"Velora agent boot 1";
inline constexpr wchar_t kAgentClass[] = L"VeloraAgent1";
inline constexpr wchar_t kHolderClass[] = L"VeloraHolder1";
inline constexpr wchar_t kEventClass[] = L"VeloraEvents1";
inline constexpr char kHookExport[] = "dwBootHook";

inline constexpr int kSlots = 32;
inline constexpr int kRulesPerSlot = 16;
inline constexpr int kMenuItems = 32;
inline constexpr int kCaption = 64;
inline constexpr std::uint32_t kQueueSize = 512; // a power of two
inline constexpr std::uint32_t kBulkBytes = 2u << 20;
/// Timeouts in a row after which a slot asks no more until the program sends Op::ping.
inline constexpr std::uint32_t kStrikes = 3;
/// Menu identifiers from here on are Windows' own.
inline constexpr std::uint32_t kFirstSystemCommand = 0xF000;

enum Mode : std::uint32_t {
    kVerdict = 1,      ///< ask the program and wait for the answer, with a limit
    kPostedBefore = 2, ///< tell it, then let AOL have the message
    kPostedAfter = 4,  ///< tell it when AOL has handled the message
    kCoalesce = 8,     ///< at most one such event under way (with a posted mode only)
    kWithControl = 16, ///< holds only while the Ctrl key is down (with kVerdict only)
};

/// The keys that were held when the message was made, as AOL's thread has them.
enum Modifier : std::uint32_t { kShift = 1, kControl = 2, kAlt = 4 };

struct Rule {
    std::uint32_t message;
    std::uint32_t wLow, wHigh; ///< the rule holds for wParam in this range, ends included
    std::uint32_t mode;
};
static_assert(sizeof(Rule) == 16);

/// One watched window. Written by the program before Op::attach, but `pending`, which both change
/// (interlocked).
struct Slot {
    std::uint32_t window;
    std::uint32_t cookie; ///< 0: free. Events that carry another cookie are stale.
    std::uint32_t ruleCount;
    std::int32_t paused;  ///< not 0: the agent neither asks nor tells
    std::int32_t pending; ///< bit of a coalescing rule: an event of it is under way
    std::int32_t missed;  ///< bit of a coalescing rule: it held while the slot was paused
    std::uint32_t reserved[2];
    Rule rules[kRulesPerSlot];
};
static_assert(sizeof(Slot) == 32 + 16 * kRulesPerSlot);

/// One item of ours in AOL's menus. Written by the program before Op::menuSync. The popup it goes
/// into is known by its caption in the menu bar, or by an item of AOL's that it holds.
struct MenuItem {
    std::uint32_t id;       ///< 0: unused
    std::int32_t position;  ///< -1: at the end
    std::uint32_t flags;    ///< MF_ flags for InsertMenu
    std::uint32_t popupHas; ///< identifier of an AOL item, or 0
    char16_t popupCaption[kCaption];
    char16_t popupHasCaption[kCaption];
    char16_t caption[kCaption];
};
static_assert(sizeof(MenuItem) == 16 + 6 * kCaption);

enum class Event : std::uint32_t {
    message = 1, ///< a posted rule held: a = message, b = wParam, c = lParam, extra = rule number
    delayed,     ///< the answer to a question asked for it: extra = event code
    child,       ///< an MDI child was made or changed and has settled: a = window
    gone,        ///< a window that the agent knew is destroyed: a = window
    moved,       ///< the frame was moved, sized, shown, hidden or activated
    menu,        ///< an item of ours was chosen: a = identifier
    muted,       ///< a slot got kStrikes and asks no more: cookie
};

/// One posted event. Written by the agent.
struct Queued {
    Event kind;
    std::uint32_t cookie;
    std::uint32_t extra;
    std::uint32_t a, b, c;
};
static_assert(sizeof(Queued) == 24);

enum class BulkKind : std::uint32_t { none, lines, text };

/// The result of a read, valid until the next one.
struct Bulk {
    std::uint32_t sequence; ///< of the command that it answers
    BulkKind kind;
    std::uint32_t window;
    std::uint32_t total;     ///< lines: display lines of the window; text: its units
    std::uint32_t first;     ///< lines: number of the first one given, from 0
    std::uint32_t count;     ///< lines: how many are given
    std::uint32_t bytes;     ///< bytes used in data
    std::uint32_t truncated; ///< 1: data was too small for all
    /// text: UTF-16 units. lines: for each a LineHead and its units.
    unsigned char data[kBulkBytes];
};

/// Before each line's units; 2-byte aligned, so it is read by copying.
struct LineHead {
    std::uint16_t units;
    std::uint16_t softWrapped; ///< 1: the text goes on in the next display line
};
static_assert(sizeof(LineHead) == 4);

struct Section {
    std::uint32_t magic, version, size;
    std::uint32_t companionPid;
    std::uint32_t companionWindow; ///< the program's event window
    std::uint32_t frame;           ///< AOL's frame
    std::uint32_t generation;      ///< differs for each connection
    std::uint32_t verdictTimeout;  ///< ms that AOL waits for an answer
    std::uint32_t settleTime;      ///< ms without change until a child counts as settled
    std::int32_t cancelled;        ///< commands up to this sequence were given up: skip them
    // From here on written by the agent.
    std::uint32_t agentWindow, aolPid, aolThread;
    std::uint32_t bootError; ///< why the boot failed (GetLastError), 0 when it did not
    std::uint32_t lostEvents, questions, timeouts;
    std::int32_t movedPending; ///< both change it, interlocked
    std::uint32_t queueHead;   ///< written by the agent
    std::uint32_t queueTail;   ///< written by the program
    std::uint32_t reserved[12];
    Slot slots[kSlots];
    MenuItem menu[kMenuItems];
    Queued queue[kQueueSize];
    Bulk bulk;
};
static_assert(offsetof(Section, slots) == 128);
static_assert(offsetof(Section, bulk)
              == 128 + sizeof(Slot) * kSlots + sizeof(MenuItem) * kMenuItems
                     + sizeof(Queued) * kQueueSize);
static_assert(sizeof(Section) < (3u << 20));

enum class Op : std::uint32_t {
    ping = 1,
    attach,     ///< a = slot
    detach,     ///< a = slot, b = cookie
    detachAll,  ///< the slots; menus and held windows stay
    readLines,  ///< window, a = first line from 0, b = at most so many
    readText,   ///< window
    readTail,   ///< window, a = characters
    selRead,    ///< window
    selReplace, ///< window, text
    select,     ///< window, a = from, b = to
    setText,    ///< window, text
    setFocus,   ///< window
    sendLine,   ///< window, text: put there and confirmed with Enter, unseen
    menuFind,   ///< text; the status is the identifier
    menuSync,   ///< the menu table was written anew
    imTake,     ///< window, a = owner, rect; the status is the holder window
    imShow,     ///< window, rect: shown there, the others of its owner hidden
    imGive,     ///< window
    imClose,    ///< window
    quit,       ///< give everything back and let go of the section
};

/// Data of a command's WM_COPYDATA (dwData = kMagic); `textUnits` UTF-16 units follow it.
struct Command {
    std::uint32_t version;
    std::uint32_t generation;
    std::uint32_t sequence;
    Op op;
    std::uint32_t window;
    std::uint32_t a, b;
    std::int32_t left, top, right, bottom; ///< screen co-ordinates
    std::uint32_t textUnits;
};
static_assert(sizeof(Command) == 48);

/// What the agent's window answers: kDone or more (some commands answer a value), or why not. A
/// plain 0 is what a window that knows no commands would answer.
enum Status : std::int32_t {
    kNoAnswer = 0,
    kDone = 1,
    kRefused = -1,   ///< the window is none of AOL's thread, or the data is wrong
    kCancelled = -2, ///< the program had given up waiting
    kNested = -3,    ///< a read inside a read
    kFull = -4,      ///< a table of the agent is full
    kNotFound = -5,
};

/// Data of a question's WM_COPYDATA (dwData = kMagic, wParam = the agent's window).
struct Question {
    std::uint32_t version;
    std::uint32_t generation;
    std::uint32_t cookie;
    std::uint32_t window, message, wParam, lParam;
    std::uint32_t modifiers;
};
static_assert(sizeof(Question) == 32);

/// The answer to a question: flags, and in bits 8 to 15 the event code. 0 lets the message through.
enum Answer : std::uint32_t { kSwallow = 1, kDelayed = 2 };
constexpr std::uint32_t answer(bool swallow, int eventCode)
{
    const std::uint32_t code = static_cast<std::uint32_t>(eventCode) & 0xFF;
    return (swallow ? kSwallow : 0u) | (code ? kDelayed | code << 8 : 0u);
}
constexpr bool swallows(std::uint32_t answer)
{
    return answer & kSwallow;
}
constexpr int eventCode(std::uint32_t answer)
{
    return answer & kDelayed ? static_cast<int>(answer >> 8 & 0xFF) : 0;
}

// Plain messages, from WM_APP up. To the program's event window:
inline constexpr std::uint32_t kDoorbell =
    0x8000 + 1; ///< wParam = queue position, lParam = generation
inline constexpr std::uint32_t kAlive = 0x8000 + 2;    ///< answer to kProbe; lParam = generation
inline constexpr std::uint32_t kAolEnded = 0x8000 + 3; ///< the program's own wait on AOL's process
inline constexpr std::uint32_t kOwnEvent = 0x8000 + 4; ///< the program to itself
// To the agent's window:
inline constexpr std::uint32_t kProbe = 0x8000 + 11;         ///< posted: "say kAlive when you can"
inline constexpr std::uint32_t kCompanionDead = 0x8000 + 12; ///< wParam = generation
inline constexpr std::uint32_t kReapHolder = 0x8000 + 13;    ///< wParam = holder

} // namespace velora::wire

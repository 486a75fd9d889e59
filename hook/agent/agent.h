#pragma once
// The agent: what runs in AOL's user-interface thread. C-like on purpose: no exceptions, no heap,
// no standard library, no object with a destructor, all state in one static block. Everything here
// is for that one thread; the only other thread that comes by is the pool thread of the wait on the
// program's process, and it does no more than post a message.
#include "base/win.h"
#include "hook/agent/filter.h"
#include "hook/agent/settle.h"
#include "hook/wire.h"

namespace velora::agent {

enum Role : std::uint32_t { kFrameRole = 1, kMdiRole = 2, kChildRole = 4, kHeldRole = 8 };

/// A window of AOL that goes through watchProc. A record without roles and slots passes everything
/// on: it stays when another program has subclassed over it, until its window is destroyed.
struct Record {
    HWND window;
    WNDPROC former;
    bool unicode;
    std::uint32_t roles;
    std::uint32_t slots; ///< bit of each slot that watches the window
    PressPair press;
};

/// The agent's own copy of a slot, so that a table changed meanwhile cannot lead it astray.
struct LocalSlot {
    wire::Slot table;
    std::uint32_t strikes;
    bool muted;
};

struct Holder {
    HWND window, im, mdi, owner;
    LONG style;
    RECT place; ///< of the IM in its MDI client
    bool visible;
};

enum Timer : UINT_PTR { kSettleTimer = 1, kOwnerTimer = 2 };

inline constexpr int kRecords = 192;
inline constexpr int kHolders = 64;
inline constexpr int kPopups = 32;

struct State {
    HINSTANCE module;
    wire::Section* section; ///< null: nobody is connected
    std::uint32_t generation;
    HANDLE mapping, companion, wait;
    HWND companionWindow, window, frame, mdi;
    DWORD thread;
    int records; ///< used entries of record[], with gaps
    bool reading;
    HWND pressing; ///< where the agent itself presses Enter: no hook asks about that
    bool releasing;
    Record record[kRecords];
    LocalSlot slot[wire::kSlots];
    SettleList settling;
    wire::MenuItem menu[wire::kMenuItems];
    bool inserted[wire::kMenuItems];
    HMENU popup[kPopups]; ///< popups that got items of ours
    Holder holder[kHolders];
};
extern State g;

inline std::uint32_t number(const void* handle)
{
    return reinterpret_cast<std::uint32_t>(handle);
}
inline HWND windowOf(std::uint32_t number)
{
    return reinterpret_cast<HWND>(number);
}
inline wchar_t* wide(char16_t* text)
{
    return reinterpret_cast<wchar_t*>(text);
}
inline const wchar_t* wide(const char16_t* text)
{
    return reinterpret_cast<const wchar_t*>(text);
}

// boot.cpp
void boot(std::uint32_t companionPid, std::uint32_t generation);
/// Gives everything back and lets go of the section. Safe to call again.
void release();
/// A window of AOL's own thread.
bool isOurs(HWND window);

// events.cpp
/// Puts the event into the queue and posts the doorbell; false when the queue is full or the
/// program is gone.
bool postEvent(wire::Event kind, std::uint32_t cookie, std::uint32_t extra, std::uint32_t a,
               std::uint32_t b = 0, std::uint32_t c = 0);
void postMoved();
void postRule(int slot, std::uint32_t rule, UINT message, WPARAM wParam, LPARAM lParam);
/// Asks the program; 0 when it does not answer in time.
std::uint32_t ask(int slot, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// subclass.cpp
LRESULT CALLBACK watchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
Record* findRecord(HWND window);
/// The window's record, subclassed anew when it has none; null when the table is full.
Record* watch(HWND window);
/// Takes the subclass off when nothing is watched any more and ours is the last one put on.
void unwatchIdle(Record& record);
wire::Status attachSlot(std::uint32_t slot);
void detachSlot(std::uint32_t slot);
void detachSlots();

// children.cpp
void watchFrame(HWND frame);
void touchChild(HWND window);
void parentNotify(std::uint32_t roles, HWND parent, WPARAM wParam, LPARAM lParam);
void reportSettled();

// menus.cpp
void syncMenus();
void removeMenus();
void insertInto(HMENU popup);
/// True when the command is an item of ours: it is told to the program and not to reach AOL.
bool tookCommand(WPARAM wParam, LPARAM lParam);
std::int32_t findItem(const wchar_t* caption);

// reading.cpp
std::int32_t readLines(const wire::Command& command);
std::int32_t readText(const wire::Command& command);
std::int32_t readTail(const wire::Command& command);
std::int32_t readSelection(const wire::Command& command);

// holders.cpp
std::int32_t takeIm(const wire::Command& command);
std::int32_t showIm(const wire::Command& command);
std::int32_t giveIm(HWND im, bool close);
void giveAllIms();
void heldDestroyed(HWND im);
void reapHolder(HWND holder);
/// Takes care of holders whose owner has gone without taking them along.
void checkOwners();
bool registerHolderClass();

// commands.cpp
LRESULT CALLBACK agentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace velora::agent

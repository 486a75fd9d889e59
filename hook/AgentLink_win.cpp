#include "hook/AgentLink.h"

#include "base/text.h"
#include "base/trap.h"
#include "hook/AgentImpl.h"

#include <algorithm>
#include <cstring>

namespace velora {
namespace {

constexpr char kModule[] = "AgentLink";

std::vector<AgentLink*>& links()
{
    static std::vector<AgentLink*> all;
    return all;
}

/// Copies a caption into its field, cut to what fits.
void copyCaption(char16_t (&field)[wire::kCaption], std::wstring_view text)
{
    const std::size_t units = std::min<std::size_t>(text.size(), wire::kCaption - 1);
    std::copy_n(text.begin(), units, field);
    std::fill(field + units, field + wire::kCaption, u'\0');
}

std::string_view bytesOf(const wire::Bulk& bulk)
{
    return {reinterpret_cast<const char*>(bulk.data), std::min(bulk.bytes, wire::kBulkBytes)};
}

} // namespace

std::optional<std::int32_t> AgentImpl::command(wire::Op op, const Arguments& arguments)
{
    if (!connected() || busy_)
        return std::nullopt;
    const std::uint32_t units = static_cast<std::uint32_t>(arguments.text.size()) + 1;
    std::vector<char> buffer(sizeof(wire::Command) + 2 * units);
    wire::Command& sent = *reinterpret_cast<wire::Command*>(buffer.data());
    sent = {wire::kVersion,
            generation_,
            ++sequence_,
            op,
            reinterpret_cast<std::uint32_t>(arguments.window),
            arguments.a,
            arguments.b,
            arguments.area.left,
            arguments.area.top,
            arguments.area.right,
            arguments.area.bottom,
            units};
    const std::uint32_t sequence = sequence_;
    const std::uint32_t generation = generation_;
    std::memcpy(buffer.data() + sizeof(wire::Command), arguments.text.data(), 2 * (units - 1));
    COPYDATASTRUCT data = {wire::kMagic, static_cast<DWORD>(buffer.size()), buffer.data()};
    DWORD_PTR result = 0;
    // Not SMTO_BLOCK: AOL may have to ask a hook of ours before it can answer.
    const LRESULT answered = SendMessageTimeoutW(
        agentWindow_, WM_COPYDATA, reinterpret_cast<WPARAM>(events_),
        reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG, arguments.timeoutMs, &result);
    if (!connected() || generation_ != generation)
        return std::nullopt; // a hook's event disconnected meanwhile
    if (answered && static_cast<std::int32_t>(result) == wire::kNoAnswer) {
        forget(); // another companion has taken the agent over
        return std::nullopt;
    }
    if (answered)
        return static_cast<std::int32_t>(result);
    if (section()->cancelled < static_cast<std::int32_t>(sequence))
        section()->cancelled = static_cast<std::int32_t>(sequence);
    noteBusy();
    return std::nullopt;
}

bool AgentImpl::succeeds(wire::Op op, const Arguments& arguments)
{
    const auto status = command(op, arguments);
    return status && *status == wire::kDone;
}

const wire::Bulk* AgentImpl::read(wire::Op op, const Arguments& arguments)
{
    const std::uint32_t sequence = sequence_ + 1;
    const auto status = command(op, arguments);
    if (!status || *status != wire::kDone)
        return nullptr;
    // A hook's event that was raised meanwhile may have read too; then this result is lost.
    const wire::Bulk& bulk = section()->bulk;
    return bulk.sequence == sequence ? &bulk : nullptr;
}

void AgentImpl::noteBusy()
{
    busy_ = true;
    if (agentWindow_)
        PostMessageW(agentWindow_, wire::kProbe, 0, 0);
}

void AgentImpl::syncMenus()
{
    menusUnsynced_ = !succeeds(wire::Op::menuSync, {});
}

AgentLink::AgentLink() : impl_(std::make_shared<AgentImpl>(*this))
{
    links().push_back(this);
}

AgentLink::~AgentLink()
{
    disconnect();
    impl_->orphan();
    std::erase(links(), this);
}

AgentLink* AgentLink::forWindow(HWND window)
{
    const DWORD thread = GetWindowThreadProcessId(window, nullptr);
    for (AgentLink* link : links())
        if (thread && link->connected() && link->impl_->thread_ == thread)
            return link;
    return nullptr;
}

bool AgentLink::connect(HWND frame, std::wstring_view dll)
{
    return trap(
        kModule, [&] { return impl_->connect(frame, dll); }, false);
}

void AgentLink::disconnect()
{
    trap(kModule, [&] { impl_->disconnect(); });
}

bool AgentLink::connected() const
{
    return impl_->connected();
}

DWORD AgentLink::lastError() const
{
    return impl_->lastError_;
}

bool AgentLink::busy() const
{
    return impl_->busy_;
}

bool AgentLink::answers(DWORD timeoutMs)
{
    return trap(
        kModule, [&] { return impl_->succeeds(wire::Op::ping, {.timeoutMs = timeoutMs}); }, false);
}

HANDLE AgentLink::aolProcess() const
{
    return impl_->process_.get();
}

HWND AgentLink::frame() const
{
    return impl_->frame_;
}

AgentCounters AgentLink::counters() const
{
    const wire::Section* section = impl_->section();
    if (!section)
        return {};
    return {section->questions, section->timeouts, section->lostEvents};
}

void AgentLink::noteBusy()
{
    impl_->noteBusy();
}

std::optional<EditLines> AgentLink::readLines(HWND edit, int first, int most, DWORD timeoutMs)
{
    return trap(
        kModule,
        [&]() -> std::optional<EditLines> {
            if (first < 0 || most < 0)
                return std::nullopt;
            const wire::Bulk* bulk =
                impl_->read(wire::Op::readLines, {.window = edit,
                                                  .a = static_cast<std::uint32_t>(first),
                                                  .b = static_cast<std::uint32_t>(most),
                                                  .timeoutMs = timeoutMs});
            if (!bulk)
                return std::nullopt;
            auto lines = parseLines(bytesOf(*bulk), bulk->count);
            if (!lines)
                return std::nullopt;
            return EditLines{static_cast<int>(bulk->total), first, std::move(*lines),
                             bulk->truncated != 0};
        },
        std::nullopt);
}

std::optional<std::wstring> AgentLink::readTail(HWND edit, int chars, DWORD timeoutMs)
{
    return trap(
        kModule,
        [&]() -> std::optional<std::wstring> {
            const wire::Bulk* bulk = impl_->read(
                wire::Op::readTail, {.window = edit,
                                     .a = static_cast<std::uint32_t>(std::max(chars, 0)),
                                     .timeoutMs = timeoutMs});
            if (!bulk)
                return std::nullopt;
            return withCrLf(fromUtf16le(bytesOf(*bulk)));
        },
        std::nullopt);
}

std::optional<std::wstring> AgentLink::readText(HWND edit, DWORD timeoutMs)
{
    return trap(
        kModule,
        [&]() -> std::optional<std::wstring> {
            const wire::Bulk* bulk =
                impl_->read(wire::Op::readText, {.window = edit, .timeoutMs = timeoutMs});
            if (!bulk)
                return std::nullopt;
            return fromUtf16le(bytesOf(*bulk));
        },
        std::nullopt);
}

std::optional<std::wstring> AgentLink::selectionText(HWND edit)
{
    return trap(
        kModule,
        [&]() -> std::optional<std::wstring> {
            const wire::Bulk* bulk = impl_->read(wire::Op::selRead, {.window = edit});
            if (!bulk)
                return std::nullopt;
            return withCrLf(fromUtf16le(bytesOf(*bulk)));
        },
        std::nullopt);
}

bool AgentLink::replaceSelection(HWND edit, std::wstring_view text)
{
    return trap(
        kModule,
        [&] { return impl_->succeeds(wire::Op::selReplace, {.window = edit, .text = text}); },
        false);
}

bool AgentLink::select(HWND edit, int from, int to)
{
    return trap(
        kModule,
        [&] {
            return impl_->succeeds(wire::Op::select, {.window = edit,
                                                      .a = static_cast<std::uint32_t>(from),
                                                      .b = static_cast<std::uint32_t>(to)});
        },
        false);
}

bool AgentLink::setText(HWND edit, std::wstring_view text)
{
    return trap(
        kModule, [&] { return impl_->succeeds(wire::Op::setText, {.window = edit, .text = text}); },
        false);
}

bool AgentLink::setFocus(HWND window)
{
    return trap(
        kModule, [&] { return impl_->succeeds(wire::Op::setFocus, {.window = window}); }, false);
}

bool AgentLink::sendLine(HWND edit, std::wstring_view text)
{
    return trap(
        kModule,
        [&] { return impl_->succeeds(wire::Op::sendLine, {.window = edit, .text = text}); }, false);
}

std::optional<UINT> AgentLink::menuFind(std::wstring_view caption)
{
    return trap(
        kModule,
        [&]() -> std::optional<UINT> {
            const auto id = impl_->command(wire::Op::menuFind, {.text = caption});
            if (!id || *id <= 0)
                return std::nullopt;
            return static_cast<UINT>(*id);
        },
        std::nullopt);
}

bool AgentLink::addMenuItem(const PopupLocator& popup, int position, UINT id,
                            std::wstring_view caption, UINT flags)
{
    if (!connected() || id == 0 || id >= wire::kFirstSystemCommand)
        return false;
    auto& table = impl_->section()->menu;
    wire::MenuItem* item = std::find_if(std::begin(table), std::end(table),
                                        [&](const wire::MenuItem& i) { return i.id == id; });
    if (item == std::end(table))
        item = std::find_if(std::begin(table), std::end(table),
                            [](const wire::MenuItem& i) { return i.id == 0; });
    if (item == std::end(table))
        return false;
    item->id = id;
    item->position = position;
    item->flags = flags;
    item->popupHas = popup.holdsId;
    copyCaption(item->popupCaption, popup.caption);
    copyCaption(item->popupHasCaption, popup.holdsCaption);
    copyCaption(item->caption, caption);
    trap(kModule, [&] { impl_->syncMenus(); });
    return true;
}

void AgentLink::removeMenuItems()
{
    trap(kModule, [&] {
        if (!connected())
            return;
        for (wire::MenuItem& item : impl_->section()->menu)
            item = {};
        impl_->syncMenus();
    });
}

HWND AgentLink::takeIM(HWND im, const RECT& place, HWND owner)
{
    return trap(
        kModule,
        [&]() -> HWND {
            const auto answer = impl_->command(
                wire::Op::imTake,
                {.window = im, .a = reinterpret_cast<std::uint32_t>(owner), .area = place});
            const HWND holder = answer ? reinterpret_cast<HWND>(*answer) : nullptr;
            if (!IsWindow(holder))
                return nullptr;
            impl_->held.push_back({im, holder});
            return holder;
        },
        nullptr);
}

bool AgentLink::showIM(HWND im, const RECT& place)
{
    return trap(
        kModule,
        [&] {
            return impl_->succeeds(wire::Op::imShow,
                                   {.window = im, .area = place, .timeoutMs = kAolTimerTimeout});
        },
        false);
}

void AgentLink::placeIM(HWND im, const RECT& place, bool visible)
{
    for (const AgentImpl::HeldIm& held : impl_->held)
        if (held.im == im)
            SetWindowPos(held.holder, nullptr, place.left, place.top, place.right - place.left,
                         place.bottom - place.top,
                         SWP_ASYNCWINDOWPOS | SWP_NOACTIVATE | SWP_NOZORDER | SWP_NOOWNERZORDER
                             | (visible ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

bool AgentLink::giveIM(HWND im)
{
    return trap(
        kModule,
        [&] {
            const bool given = impl_->succeeds(wire::Op::imGive, {.window = im});
            if (given)
                std::erase_if(impl_->held, [&](const auto& entry) { return entry.im == im; });
            return given;
        },
        false);
}

bool AgentLink::closeIM(HWND im)
{
    return trap(
        kModule,
        [&] {
            const bool closed = impl_->succeeds(wire::Op::imClose, {.window = im});
            if (closed)
                std::erase_if(impl_->held, [&](const auto& entry) { return entry.im == im; });
            return closed;
        },
        false);
}

std::wstring dwXGetEditLine(HWND edit, int line)
{
    AgentLink* link = AgentLink::forWindow(edit);
    if (!link || line < 1)
        return {};
    const auto lines = link->readLines(edit, line - 1, 1);
    return lines && !lines->lines.empty() ? lines->lines.front().text : std::wstring();
}

} // namespace velora

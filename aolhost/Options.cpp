#include "aolhost/Options.h"

#include "aolhost/Text.h"

#include <array>
#include <functional>

namespace aolhost {
namespace {

template <class Value, std::size_t N>
bool choose(Value& target, std::wstring_view word,
            const std::array<std::pair<const wchar_t*, Value>, N>& choices)
{
    for (const auto& [name, value] : choices)
        if (sameNoCase(word, name)) {
            target = value;
            return true;
        }
    return false;
}

template <class Number>
bool number(Number& target, std::wstring_view text, long from, long to)
{
    const long value = numberOr(text, from - 1);
    if (value < from || value > to)
        return false;
    target = static_cast<Number>(value);
    return true;
}

bool text(std::wstring& target, std::wstring_view value)
{
    target = value;
    return true;
}

bool flag(bool& target, std::wstring_view value)
{
    target = isOn(value);
    return true;
}

struct Setter {
    const wchar_t* name;
    bool runTime;
    bool (*set)(Options&, std::wstring_view);
};

using V = std::wstring_view;

const Setter kSetters[] = {
    {L"edition", false, [](Options& o, V v) { return number(o.edition, v, 0, 5); }},
    {L"version", false, [](Options& o, V v) { return number(o.version, v, 1, 9); }},
    {L"pipe", false, [](Options& o, V v) { return text(o.pipe, v); }},
    {L"script", false, [](Options& o, V v) { return text(o.script, v); }},
    {L"transcript", false, [](Options& o, V v) { return text(o.transcript, v); }},
    {L"signon", false, [](Options& o, V v) { return text(o.signOnName, v); }},
    {L"keyword", false, [](Options& o, V v) { return text(o.keyword, v); }},
    {L"names", false,
     [](Options& o, V v) {
         o.names = v.empty() ? std::vector<std::wstring>{} : splitAt(v, L',');
         return true;
     }},
    {L"late", true, [](Options& o, V v) { return number(o.lateMs, v, 0, 600000); }},
    {L"trim", true, [](Options& o, V v) { return number(o.trimAt, v, 0, 100000000); }},
    {L"mdi", true,
     [](Options& o, V v) {
         return choose<MdiWay, 3>(
             o.mdi, v,
             {{{L"create", MdiWay::create}, {L"ex", MdiWay::ex}, {L"plain", MdiWay::plain}}});
     }},
    {L"notice", true,
     [](Options& o, V v) {
         return choose<Notice, 2>(o.notice, v,
                                  {{{L"sent", Notice::sent}, {L"posted", Notice::posted}}});
     }},
    {L"enter", true,
     [](Options& o, V v) {
         return choose<EnterOn, 2>(
             o.enter, v, {{{L"char", EnterOn::charMessage}, {L"keydown", EnterOn::keyDown}}});
     }},
    {L"reply", true,
     [](Options& o, V v) {
         return choose<ReplyPart, 3>(o.reply, v,
                                     {{{L"shown", ReplyPart::shown},
                                       {L"hidden", ReplyPart::hidden},
                                       {L"absent", ReplyPart::absent}}});
     }},
    {L"edits", true,
     [](Options& o, V v) {
         return choose<bool, 2>(o.wideEdits, v, {{{L"a", false}, {L"w", true}}});
     }},
    {L"answer", true,
     [](Options& o, V v) {
         return choose<bool, 2>(o.answerModal, v, {{{L"modal", true}, {L"child", false}}});
     }},
    {L"chatform", true, [](Options& o, V v) { return flag(o.chatForm, v); }},
    {L"plainfrench", true, [](Options& o, V v) { return flag(o.plainFrench, v); }},
    {L"sounds", true, [](Options& o, V v) { return flag(o.sounds, v); }},
    {L"closed", true, [](Options& o, V v) { return flag(o.closed, v); }},
};

const Setter* find(std::wstring_view name)
{
    for (const Setter& setter : kSetters)
        if (sameNoCase(setter.name, name))
            return &setter;
    return nullptr;
}

} // namespace

bool setOption(Options& options, std::wstring_view name, std::wstring_view value)
{
    const Setter* setter = find(name);
    return setter && setter->set(options, value);
}

bool isRunTimeOption(std::wstring_view name)
{
    const Setter* setter = find(name);
    return setter && setter->runTime;
}

void applyVersionHabits(Options& options)
{
    const bool later = options.version >= 6;
    options.enter = later ? EnterOn::keyDown : EnterOn::charMessage;
    options.reply = later ? ReplyPart::shown : ReplyPart::hidden;
    options.notice = later ? Notice::sent : Notice::posted;
}

} // namespace aolhost

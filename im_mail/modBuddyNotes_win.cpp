#include "im_mail/modBuddyNotes.h"

#include "base/text.h"
#include "base/trap.h"
#include "settings/clsRegistry.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modBuddyNotes";
constexpr wchar_t kNotesKey[] = L"Software\\Orv Software\\Notes";

clsRegistry notesKey()
{
    clsRegistry registry;
    registry.ClassKey(HKEY_CURRENT_USER);
    registry.SectionKey(kNotesKey);
    return registry;
}

/// A name without what a registry value's name cannot hold; empty when nothing is left.
std::wstring valueNameOf(std::wstring_view screenName)
{
    std::wstring name = trim(screenName.substr(0, kMostNoteName));
    std::erase_if(name, [](wchar_t c) { return static_cast<unsigned>(c) < 0x20; });
    return screenNameKey(name).empty() ? std::wstring() : name;
}

/// How the name was spelled when its note was written; as it is now when it has none.
std::wstring presentSpelling(const clsRegistry& registry, const std::wstring& name)
{
    const std::wstring key = screenNameKey(name);
    for (const auto& [present, value] : registry.EnumerateValues())
        if (screenNameKey(present) == key)
            return present;
    return name;
}

} // namespace

std::wstring GetBuddyNotes(std::wstring_view screenName)
{
    return trap(
        kModule,
        [&]() -> std::wstring {
            const std::wstring name = valueNameOf(screenName);
            clsRegistry registry = notesKey();
            if (name.empty() || !registry.KeyExists())
                return {};
            registry.ValueKey(presentSpelling(registry, name));
            registry.Default(std::wstring());
            const RegValue value = registry.Value();
            const auto* const text = std::get_if<std::wstring>(&value);
            return text ? text->substr(0, kMostNote) : std::wstring();
        },
        std::wstring());
}

bool saveBuddyNote(std::wstring_view screenName, std::wstring_view note)
{
    return trap(
        kModule,
        [&] {
            const std::wstring name = valueNameOf(screenName);
            if (name.empty())
                return false;
            clsRegistry registry = notesKey();
            registry.ValueKey(presentSpelling(registry, name));
            std::wstring text(note.substr(0, kMostNote));
            text.resize(std::min(text.find(L'\0'), text.size()));
            if (!trim(text).empty())
                registry.Value(text);
            else if (registry.KeyExists())
                registry.DeleteValue();
            return true;
        },
        false);
}

} // namespace velora

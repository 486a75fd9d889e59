#include "support/install_win.h"

#include "base/files.h"
#include "core/modStartup.h"
#include "settings/SettingsStore.h"
#include "settings/clsRegistry.h"
#include "support/drive_win.h"

#include <stdexcept>

namespace velora::test {
namespace {

std::wstring systemFolder()
{
    wchar_t folder[MAX_PATH];
    return std::wstring(folder, GetSystemDirectoryW(folder, MAX_PATH));
}

void put(const std::wstring& from, const std::wstring& to)
{
    if (!CopyFileW(from.c_str(), to.c_str(), FALSE))
        throw std::runtime_error("cannot install a file");
}

std::unique_ptr<SettingsStore> productKey()
{
    return makeRegistryStore(kProductKey);
}

struct ShownText {
    DWORD process;
    std::wstring_view text;
    HWND found;
};

bool shows(HWND window, std::wstring_view text)
{
    return drive::text(window).find(text) != std::wstring::npos;
}

BOOL CALLBACK lookAt(HWND window, LPARAM parameter)
{
    auto& wanted = *reinterpret_cast<ShownText*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != wanted.process || !IsWindowVisible(window))
        return TRUE;
    bool found = shows(window, wanted.text);
    for (const HWND child : drive::children(window))
        found = found || shows(child, wanted.text);
    if (found)
        wanted.found = window;
    return !found;
}

} // namespace

HWND windowShowing(DWORD processId, std::wstring_view text, unsigned ms)
{
    ShownText wanted{processId, text, nullptr};
    drive::until(
        [&] {
            EnumWindows(lookAt, reinterpret_cast<LPARAM>(&wanted));
            return wanted.found != nullptr;
        },
        ms);
    return wanted.found;
}

struct Installation::SavedKey {
    std::wstring section;
    std::vector<std::pair<std::wstring, RegValue>> values;
};

namespace {

template <class Keys>
void saveKeys(SettingsStore& store, const std::wstring& section, Keys& saved)
{
    saved.push_back({section, store.values(section)});
    for (const std::wstring& inner : store.sections(section))
        saveKeys(store, section.empty() ? inner : section + L"\\" + inner, saved);
}

void clearProductKey()
{
    const auto store = productKey();
    for (const std::wstring& section : store->sections(L""))
        store->removeSection(section);
    for (const auto& [name, value] : store->values(L""))
        store->remove(L"", name);
}

void removeFileType()
{
    for (const HKEY root : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER}) {
        for (const wchar_t* key :
             {L"Velora.InstallScheme\\shell\\open\\command", L"Velora.InstallScheme\\shell\\open",
              L"Velora.InstallScheme\\shell", L"Velora.InstallScheme\\DefaultIcon",
              L"Velora.InstallScheme", L".fde"}) {
            clsRegistry registry;
            registry.ClassKey(root);
            registry.SectionKey(root == HKEY_CLASSES_ROOT ? L"" : L"Software\\Classes");
            registry.SubKey(key);
            registry.DeleteKey();
        }
    }
}

} // namespace

Installation::Installation(const std::wstring& folderName) : folder_(temp_.folder(folderName))
{
    for (const FileEntry& entry : listFolder(buildFolder()))
        if (!entry.folder && (entry.name == L"velora.exe" || entry.name.ends_with(L".dll")))
            put(buildFolder() + L"\\" + entry.name, folder_ + L"\\" + entry.name);
    putCompanions();
    const auto store = productKey();
    saveKeys(*store, L"", saved_);
    clearProductKey();
    removeFileType();
}

Installation::~Installation()
{
    try {
        clearProductKey();
        removeFileType();
        const auto store = productKey();
        for (const SavedKey& key : saved_)
            for (const auto& [name, value] : key.values)
                store->write(key.section, name, value);
        for (const Companion& companion : companions_) {
            DeleteFileW(companion.path.c_str());
            if (!companion.kept.empty())
                MoveFileExW(companion.kept.c_str(), companion.path.c_str(),
                            MOVEFILE_REPLACE_EXISTING);
        }
    } catch (...) {
        // The next installation clears what is left.
    }
}

void Installation::putCompanions()
{
    for (const std::wstring& name : companionFiles()) {
        Companion companion{systemFolder() + L"\\" + name, {}};
        if (fileExists(companion.path)) {
            // A module in use can be renamed, not overwritten.
            companion.kept = companion.path + L".kept";
            MoveFileExW(companion.path.c_str(), companion.kept.c_str(), MOVEFILE_REPLACE_EXISTING);
        }
        companions_.push_back(companion);
        const std::wstring built = buildFolder() + L"\\" + name;
        if (fileExists(built))
            put(built, companion.path);
        else
            replaceFile(companion.path, "stands in for a companion file");
    }
}

Process Installation::start(const std::wstring& arguments) const
{
    return Process(file(L"velora.exe"), arguments, folder_);
}

std::string Installation::log() const
{
    return readFile(file(L"velora.log")).value_or("");
}

RegValue Installation::setting(std::wstring_view section, std::wstring_view name)
{
    RegValue found;
    productKey()->withSection(section, [&](const SettingsStore::Reader& read) {
        found = read(std::wstring(name).c_str()).value_or(RegValue());
    });
    return found;
}

void Installation::putSetting(std::wstring_view section, std::wstring_view name,
                              const RegValue& value)
{
    productKey()->write(section, name, value);
}

void Installation::removeCompanion(const std::wstring& name)
{
    deleteFile(systemFolder() + L"\\" + name);
}

} // namespace velora::test

// The wav list: the user's categories and favourites, and what goes into them.
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "sounds/fileFacts.h"
#include "sounds/frmNewCategory.h"
#include "sounds/frmWavs.h"
#include "sounds/modFavWavs.h"
#include "sounds/modSounds.h"
#include "sounds/modWavLibrary.h"
#include "ui/FolderDialog.h"
#include "ui/MessageLoop.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmWavs";
constexpr wchar_t kTitle[] = L"Wav List";
constexpr wchar_t kNoFiles[] = L"~B~CRCannot add files!~B~CN~N ~NThere are no files in this "
                               L"directory to add!";

std::wstring folderOf(const std::wstring& path)
{
    return path.substr(0, path.find_last_of(L'\\'));
}

std::wstring nameOf(const std::wstring& path)
{
    return path.substr(path.find_last_of(L'\\') + 1);
}

/// The sounds among these files and in these folders (not in those below them).
std::vector<std::wstring> soundsOf(const std::vector<std::wstring>& paths)
{
    std::vector<std::wstring> sounds;
    for (const std::wstring& path : paths)
        if (kindOfFile(path) && fileExists(path))
            sounds.push_back(path);
        else
            visitFolder(path, [&](const FileFound& file) {
                if (!file.folder && kindOfFile(file.name))
                    sounds.push_back(joinPath(path, file.name));
                return true;
            });
    return sounds;
}

} // namespace

void frmWavs::newCategory()
{
    trap(kModule, [&] {
        const auto choice = frmNewCategory().ask();
        if (!isOpen() || choice == frmNewCategory::Choice::none)
            return;
        if (choice == frmNewCategory::Choice::group) {
            CreateWavList();
            return;
        }
        const std::wstring folder =
            chooseFolder(hwnd(), L"The directory whose sound files the Category lists:",
                         source().listFile ? std::wstring() : source().path);
        if (!folder.empty() && isOpen())
            CreateWavDir(folder);
    });
}

std::wstring frmWavs::askCategoryName(const std::wstring& prompt, const std::wstring& initial,
                                      const std::wstring& former)
{
    std::wstring name = initial;
    for (;;) {
        name = trim(InputBoxEx(prompt, L"Category", name, {.masked = false, .maxLength = 100}));
        if (name.empty() || !isOpen())
            return {};
        const std::wstring fault = categoryNameFault(name, wavCategories(), former);
        if (fault.empty())
            return name;
        MsgBoxEx(fault, kMsgExclamation, L"Category");
    }
}

void frmWavs::CreateWavDir(const std::wstring& folder)
{
    trap(kModule, [&] {
        if (!folderExists(folder)) {
            MsgBoxEx(kNoWavDirectory, kMsgExclamation, kTitle);
            return;
        }
        const std::wstring name = askCategoryName(
            L"Enter a name for this new Category and click ~BOK~B.~N ~NPath for this Category is: "
            L"~B~CB"
                + literal(folder),
            folder.size() > 3 ? nameOf(folder) : std::wstring(), {});
        if (name.empty())
            return;
        saveCategory({name, folder, {}});
        categoriesChanged(name);
    });
}

void frmWavs::CreateWavList()
{
    trap(kModule, [&] {
        const std::wstring name =
            askCategoryName(L"Enter a name for this new Category and click ~BOK~B.", {}, {});
        if (name.empty())
            return;
        saveCategory({name, {}, freeGroupName(name, wavCategories())});
        categoriesChanged(name);
        showStatus(L"Drop sound files here to add them to " + name);
    });
}

void frmWavs::cmdEditCat_Click()
{
    trap(kModule, [&] {
        const WavCategory* const present = category(source());
        if (!present) {
            MsgBoxEx(L"~B~CRNo Category Name has been selected for editing.~B~CN~N ~NPlease select "
                     L"a Category before attempting to use this function.",
                     kMsgExclamation, kTitle);
            return;
        }
        const WavCategory former = *present;
        const std::wstring name = askCategoryName(
            L"Below is the currently selected Category.  Make changes as necessary and click OK.",
            former.name, former.name);
        if (name.empty())
            return;
        renameCategory(former, name);
        categoriesChanged(name);
    });
}

void frmWavs::cmdDelCat_Click()
{
    trap(kModule, [&] {
        const WavCategory* const present = category(source());
        if (!present) {
            MsgBoxEx(L"~B~CRNo Category has been selected for deletion.~B~CN~N ~NPlese select a "
                     L"category before attemping this function.",
                     kMsgExclamation, kTitle);
            return;
        }
        const WavCategory gone = *present;
        if (MsgBoxEx(L"You are about to delete the Category ~B~CR" + literal(gone.name)
                         + L".~B~CN~N ~NThis action will ~Bnot~B delete actual files.~N ~NDo you "
                           L"wish to proceed?",
                     kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kTitle)
            != kAnswerYes)
            return;
        deleteCategory(gone);
        if (isOpen())
            categoriesChanged();
    });
}

void frmWavs::AddFavWav()
{
    trap(kModule, [&] {
        const auto sound = chosenOrTold(kNoWavSelected);
        if (!sound)
            return;
        const bool added = velora::AddFavWav(favWavsFile(), sound->name, sound->path);
        if (source().kind == WavSource::Kind::favourites)
            ListWavs();
        showStatus(sound->name + (added ? L" added to FavWavs" : L" is in FavWavs already"));
    });
}

// From the list that is shown: the favourites or a group.
void frmWavs::DelFavWav()
{
    trap(kModule, [&] {
        const auto sound = chosenOrTold(kNoWavSelected);
        if (!sound || !sources_[sound->source].listFile)
            return;
        const WavSource from = sources_[sound->source];
        if (!velora::DelFavWav(from.path, sound->path))
            return;
        ListWavs();
        showStatus(sound->name + L" removed from " + from.name);
    });
}

void frmWavs::copyTo(const WavSource& target)
{
    trap(kModule, [&] {
        const auto sound = chosenOrTold(kNoWavSelected);
        if (!sound || !fileThere(*sound))
            return;
        if (target.listFile) {
            addToGroup(target, {sound->path});
            return;
        }
        if (equalNoCase(folderOf(sound->path), target.path)) {
            MsgBoxEx(L"~B~CRCan not send file~B~CN~N ~N~BSource~B and ~Bdestination~B directories "
                     L"are the same.",
                     kMsgExclamation, kTitle);
            return;
        }
        const std::wstring copy = joinPath(target.path, nameOf(sound->path));
        if (fileExists(copy)
            && MsgBoxEx(L"The file ~B" + literal(nameOf(copy)) + L"~B already exists in ~B"
                            + literal(target.name) + L"~B.~N ~NDo you wish to replace it?",
                        kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kTitle)
                   != kAnswerYes)
            return;
        copyFile(sound->path, copy, true);
        if (isOpen())
            showStatus(sound->name + L" copied to " + target.name);
    });
}

void frmWavs::addFolderToGroup()
{
    trap(kModule, [&] {
        const WavSource group = source();
        const std::wstring folder =
            chooseFolder(hwnd(), L"The directory whose sound files are added:", {});
        if (folder.empty() || !isOpen())
            return;
        addToGroup(group, {folder});
    });
}

void frmWavs::addToGroup(const WavSource& target, const std::vector<std::wstring>& paths)
{
    const std::vector<std::wstring> sounds = soundsOf(paths);
    if (sounds.empty()) {
        MsgBoxEx(kNoFiles, kMsgExclamation, kTitle);
        return;
    }
    const std::size_t added = addListEntries(target.path, sounds);
    if (!isOpen())
        return;
    libraryStamp_.clear();
    ListWavs();
    showStatus(std::to_wstring(added) + (added == 1 ? L" sound added to " : L" sounds added to ")
               + target.name);
}

void frmWavs::onDropFiles(const std::vector<std::wstring>& paths)
{
    trap(kModule, [&] {
        if (source().listFile) {
            addToGroup(source(), paths);
            return;
        }
        // A folder that is dropped can become a category; files belong into a group.
        if (paths.size() == 1 && folderExists(paths[0])) {
            postCall([this, folder = paths[0]] {
                if (isOpen())
                    CreateWavDir(folder);
            });
            return;
        }
        showStatus(L"Choose a group or FavWavs to drop sound files into");
    });
}

} // namespace velora

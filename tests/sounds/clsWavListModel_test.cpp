#include "sounds/clsWavListModel.h"

#include "base/files.h"
#include "sounds/modFavWavs.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

std::vector<std::wstring> names(const clsWavListModel& model)
{
    std::vector<std::wstring> result;
    for (int i = 0; i < model.count(); ++i)
        result.push_back(model.name(i));
    return result;
}

using Names = std::vector<std::wstring>;

} // namespace

TEST_CASE("AOL's sounds are listed by kind, sorted, and its own may be left out")
{
    const TempDir dir;
    const auto sources = wavSources(dir.path(), dir.path(), {});
    REQUIRE(sources.size() == 3);
    clsWavListModel model;
    CHECK_FALSE(model.fill(sources[0], SoundKind::wav, {}));
    CHECK(model.count() == 0);

    const std::wstring sounds = dir.folder(L"sounds");
    for (const wchar_t* file : {L"zoo.wav", L"Welcome.WAV", L"apple.wav", L"IM.wav", L"tune.mid",
                                L"notes.txt", L".wav", L"long.wave"})
        replaceFile(joinPath(sounds, file), std::string(file[0] == L'z' ? 10 : 2000, 'x'));
    makeFolder(joinPath(sounds, L"folder.wav"));

    CHECK(model.fill(sources[0], SoundKind::wav, {}));
    CHECK(names(model) == Names{L"apple", L"im", L"welcome", L"zoo"});
    CHECK(model.path(0) == joinPath(sounds, L"apple.wav"));
    CHECK(model.bytes(0) == 2000);
    model.fill(sources[0], SoundKind::wav, {.preserveCase = false, .noAolWavs = true});
    CHECK(names(model) == Names{L"apple", L"im", L"zoo"});
    model.fill(sources[0], SoundKind::wav, {.preserveCase = true, .noAolWavs = true});
    CHECK(names(model) == Names{L"apple", L"Welcome", L"zoo"});
    model.fill(sources[0], SoundKind::mid, {});
    CHECK(names(model) == Names{L"tune"});
}

TEST_CASE("order, quick find and typing ahead")
{
    const TempDir dir;
    for (const auto& [file, bytes] :
         {std::pair{L"bell.wav", 300}, {L"Big Bang.wav", 100}, {L"cow bell.wav", 200}})
        replaceFile(dir.file(file), std::string(bytes, 'x'));
    clsWavListModel model;
    model.fill({L"mine", dir.path()}, SoundKind::wav, {});
    model.sortBy(clsWavListModel::Column::size);
    CHECK(names(model) == Names{L"big bang", L"cow bell", L"bell"});
    model.sortBy(clsWavListModel::Column::size);
    CHECK(names(model) == Names{L"bell", L"cow bell", L"big bang"});
    model.sortBy(clsWavListModel::Column::name);
    CHECK(names(model) == Names{L"bell", L"big bang", L"cow bell"});
    // By a text of the caller's: the lengths of the names here.
    const auto length = [&](clsWavListModel::Index row) {
        return std::to_wstring(model.rows().name(row, false).size());
    };
    model.sortByText(1, length);
    CHECK(names(model) == Names{L"bell", L"big bang", L"cow bell"});
    model.sortByText(1, length);
    CHECK(names(model) == Names{L"cow bell", L"big bang", L"bell"});
    model.sortBy(clsWavListModel::Column::name);

    CHECK(model.beginningWith(L"B", 0) == 0);
    CHECK(model.beginningWith(L"B", 1) == 1);
    CHECK(model.beginningWith(L"b", 2) == 0);
    CHECK(model.beginningWith(L"x", 0) == -1);

    model.find(L"BELL");
    CHECK(names(model) == Names{L"bell", L"cow bell"});
    CHECK(model.indexOf(dir.file(L"cow bell.wav")) == 1);
    CHECK(model.indexOf(dir.file(L"Big Bang.wav")) == -1);
    model.find(L"ell co");
    CHECK(names(model) == Names{L"cow bell"});
    // What is listed anew is still found by what is typed.
    model.fill({L"mine", dir.path()}, SoundKind::wav, {});
    CHECK(names(model) == Names{L"cow bell"});
    model.find(L"");
    CHECK(model.count() == 3);
}

TEST_CASE(
    "the whole library: folders, favourites and groups, of every kind, each row with its source")
{
    const TempDir dir;
    const std::wstring mine = dir.folder(L"mine");
    replaceFile(joinPath(mine, L"Bell.wav"), "1234");
    replaceFile(joinPath(mine, L"tune.mid"), "12");
    const std::wstring list = dir.file(L"list.dat");
    AddFavWav(list, L"My Bell", joinPath(mine, L"Bell.wav"));
    AddFavWav(list, L"gone", joinPath(mine, L"gone.mp3"));
    AddFavWav(list, L"other machine", L"\\\\host\\share\\bell.wav");
    AddFavWav(list, L"no sound", L"C:\\x.txt");
    const std::vector<WavSource> sources = {{L"mine", mine}, {L"list", list, true}};

    clsWavListModel model;
    CHECK(model.fillAll(sources, {}));
    CHECK(names(model) == Names{L"bell", L"gone", L"my bell", L"other machine", L"tune"});
    CHECK(model.source(0) == 0);
    CHECK(model.source(2) == 1);
    CHECK(model.kind(1) == SoundKind::mp3);
    CHECK(model.bytes(2) == 4);
    CHECK(model.bytes(1) == 0);
    // Its size would have to be asked of the other machine.
    CHECK(model.bytes(3) == 0);
    CHECK(model.path(3) == L"\\\\host\\share\\bell.wav");
    CHECK(model.rows().fileName(model.at(2)) == L"Bell.wav");
    CHECK_FALSE(model.fillAll(sources, {}, [] { return false; }));
    CHECK(model.count() == 2);
}

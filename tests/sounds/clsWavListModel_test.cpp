#include "sounds/clsWavListModel.h"

#include "base/files.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

#ifdef _WIN32
constexpr wchar_t kSeparator = L'\\';
#else
constexpr wchar_t kSeparator = L'/';
#endif

std::vector<std::wstring> names(const clsWavListModel& model)
{
    std::vector<std::wstring> result;
    for (int i = 0; i < model.count(); ++i)
        result.push_back(model[i].name);
    return result;
}

using Names = std::vector<std::wstring>;

} // namespace

TEST_CASE("AOL's sounds are listed by kind, sorted, and its own may be left out")
{
    const TempDir dir;
    const auto sources = wavSources(dir.path(), dir.path(), kSeparator);
    REQUIRE(sources.size() == 3);
    clsWavListModel model;
    CHECK_FALSE(model.fill(sources[0], SoundKind::wav, {}));
    CHECK(model.count() == 0);

    const std::wstring sounds = dir.folder(L"sounds");
    for (const wchar_t* file : {L"zoo.wav", L"Welcome.WAV", L"apple.wav", L"IM.wav", L"tune.mid",
                                L"notes.txt", L".wav", L"long.wave"})
        replaceFile(sounds + kSeparator + file, std::string(file[0] == L'z' ? 10 : 2000, 'x'));
    makeFolder(sounds + kSeparator + L"folder.wav");

    CHECK(model.fill(sources[0], SoundKind::wav, {}));
    CHECK(names(model) == Names{L"apple", L"im", L"welcome", L"zoo"});
    CHECK(model[0].path == sounds + kSeparator + L"apple.wav");
    CHECK(model[0].bytes == 2000);
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
    model.fill({L"mine", dir.path(), false}, SoundKind::wav, {});
    model.sortBy(clsWavListModel::Column::size);
    CHECK(names(model) == Names{L"big bang", L"cow bell", L"bell"});
    model.sortBy(clsWavListModel::Column::size);
    CHECK(names(model) == Names{L"bell", L"cow bell", L"big bang"});
    model.sortBy(clsWavListModel::Column::name);
    CHECK(names(model) == Names{L"bell", L"big bang", L"cow bell"});

    CHECK(model.beginningWith(L"B", 0) == 0);
    CHECK(model.beginningWith(L"B", 1) == 1);
    CHECK(model.beginningWith(L"b", 2) == 0);
    CHECK(model.beginningWith(L"x", 0) == -1);

    model.find(L"bell");
    CHECK(names(model) == Names{L"bell", L"cow bell"});
    CHECK(model.indexOf(dir.file(L"cow bell.wav")) == 1);
    CHECK(model.indexOf(dir.file(L"Big Bang.wav")) == -1);
    // The text goes on choosing when the list is filled anew.
    model.fill({L"mine", dir.path(), false}, SoundKind::wav, {});
    CHECK(model.count() == 2);
    model.find(L"");
    CHECK(model.count() == 3);
}

TEST_CASE("the favourites")
{
    const TempDir dir;
    replaceFile(dir.file(L"one.wav"), "12345");
    const WavSource source{L"FavWavs", dir.file(L"favwavs.dat"), true};
    clsWavListModel model;
    CHECK(model.fill(source, SoundKind::wav, {}));
    CHECK(model.count() == 0);
    const std::string folder(dir.path().begin(), dir.path().end());
    replaceFile(source.path, "One\t" + folder + static_cast<char>(kSeparator)
                                 + "one.wav\r\ngone\tC:\\gone.wav\r\ntune\tC:\\t.mid\r\n");
    model.fill(source, SoundKind::wav, {});
    CHECK(names(model) == Names{L"gone", L"one"});
    CHECK(model[0].bytes == 0);
    CHECK(model[1].bytes == 5);
}

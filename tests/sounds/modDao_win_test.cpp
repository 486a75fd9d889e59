// The two engines that the program can have: the system's DAO by its name, here a server of the
// tests, and the module beside the program; and what is told when there is neither.
#include "base/files.h"
#include "base/text.h"
#include "settings/clsRegistry.h"
#include "sounds/clsDatabase.h"
#include "sounds/daoserver/daoserver.h"
#include "support/aolhost_win.h"
#include "support/drive_win.h"
#include "support/install_win.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

#include <objbase.h>

using namespace velora;
using namespace velora::test;

namespace {

constexpr wchar_t kProgramId[] = L"DAO.DBEngine.36";

std::wstring classKey()
{
    return L"CLSID\\" + std::wstring(kDaoServerClass);
}

void setValue(const std::wstring& path, const wchar_t* name, const std::wstring& value)
{
    HKEY key = nullptr;
    REQUIRE(RegCreateKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                            &key, nullptr)
            == ERROR_SUCCESS);
    RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                   static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(key);
}

/// The server, registered as DAO is. Not for the current user alone: Wine looks for classes only
/// among those of all users.
struct Registered {
    Registered()
    {
        const std::wstring build = buildFolder();
        const std::wstring server =
            build.substr(0, build.find_last_of(L'\\')) + L"\\testbin\\daoserver.dll";
        REQUIRE(fileExists(server));
        setValue(std::wstring(kProgramId) + L"\\CLSID", nullptr, kDaoServerClass);
        setValue(classKey() + L"\\InprocServer32", nullptr, server);
        setValue(classKey() + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    }
    ~Registered()
    {
        for (const std::wstring& key :
             {std::wstring(kProgramId) + L"\\CLSID", std::wstring(kProgramId),
              classKey() + L"\\InprocServer32", classKey()})
            RegDeleteKeyW(HKEY_CLASSES_ROOT, key.c_str());
    }
};

struct Com {
    Com() { CoInitialize(nullptr); }
    ~Com() { CoUninitialize(); }
};

/// The whole of what the class does, over an engine.
void useAll(const std::function<std::unique_ptr<DaoEngine>()>& engine)
{
    const TempDir dir;
    std::vector<std::wstring> said;
    const auto message = [&](const std::wstring& prompt, int) { said.push_back(prompt); };
    clsDatabase db(dir.path(), {engine, message});
    REQUIRE(db.Init());
    CHECK(db.GetTables()
          == std::vector<std::wstring>{L"AOL Directory", L"AOL Sounds", L"Windows Directory"});
    CHECK(db.AddTable(L"Mine"));
    CHECK_FALSE(db.AddTable(L"MINE"));
    db.SetTable(L"Mine");
    const Description hello{.fileName = L"hello.wav",
                            .title = fromUtf8("\xC3\x9C\x62\x65r \xE2\x98\xBA"),
                            .year = L"20011",
                            .comments = std::wstring(300, L'c')};
    db.SetRecord(hello);
    CHECK(db.AddWavDescription());
    CHECK_FALSE(db.AddWavDescription());
    CHECK(db.AddRecords({{.fileName = L"a.wav"}, {.fileName = L"z.wav"}, hello}).added == 2);
    CHECK(db.GetRecordCount(L"Mine") == 3);
    REQUIRE(db.IsMatch(L"HELLO.wav"));
    CHECK(db.Title() == hello.title);
    CHECK(db.Year() == L"2001");
    CHECK(db.Comments().size() == 255);
    CHECK(db.Album() == L"");
    db.SetRecord({.fileName = L"hello.wav", .album = L"Changed"});
    CHECK(db.EditWavDescription());
    CHECK(db.EditTable(L"Mine", L"Ours"));
    CHECK(db.TransferRecord(L"a.wav", L"Ours", L"AOL Sounds"));
    db.SetTable(L"Ours");
    const auto records = db.GetRecords();
    REQUIRE(records.size() == 2);
    CHECK(records[0] == Description{.fileName = L"hello.wav", .album = L"Changed"});
    CHECK(records[1].fileName == L"z.wav");
    db.SetFileName(L"z.wav");
    CHECK(db.DeleteWavDescription());
    CHECK(db.Compact());
    CHECK(db.Repair());
    CHECK(said.size() == 2);
    CHECK(db.DeleteTable(L"Windows Directory"));
    REQUIRE(db.IsMatch(L"hello.wav"));
    CHECK(db.Album() == L"Changed");

    db.close();
    replaceFile(db.DatabasePath(), "damaged");
    said.clear();
    REQUIRE(db.Init());
    CHECK(fileExists(dir.file(L"wav description.bad")));
    CHECK(db.GetTables().size() == 3);
    CHECK(said.size() == 2);
}

} // namespace

TEST_CASE("the module beside the program does all that the class asks for")
{
    useAll(createEmbeddedDao);
}

TEST_CASE("so does the system's DAO, called by name; one without RepairDatabase, too")
{
    const Com com;
    CHECK_FALSE(createSystemDao());
    const Registered server;
    REQUIRE(createSystemDao());
    useAll(createSystemDao);
    SetEnvironmentVariableW(kNoRepairVariable, L"1");
    useAll(createSystemDao);
    SetEnvironmentVariableW(kNoRepairVariable, nullptr);
}

TEST_CASE("the numbers of the system's DAO are DAO's")
{
    const Com com;
    const Registered server;
    const auto engine = createSystemDao();
    REQUIRE(engine);
    const TempDir dir;
    const auto number = [](const std::function<void()>& body) {
        try {
            body();
        } catch (const JetError& error) {
            return error.number();
        }
        return 0L;
    };
    CHECK(number([&] { engine->openDatabase(dir.file(L"no.mdb")); }) == 3024);
    const auto db = engine->createDatabase(dir.file(L"x.mdb"), kJetLocaleGeneral);
    CHECK(number([&] { engine->createDatabase(dir.file(L"x.mdb"), kJetLocaleGeneral); }) == 3204);
    CHECK(number([&] { db->openRecordset(L"None"); }) == 3078);
    CHECK(number([&] { db->deleteTable(L"None"); }) == 3011);
    db->appendTable(categoryTable(L"T"));
    const auto set = db->openRecordset(L"T");
    CHECK(number([&] { set->setIndex(L"Other"); }) == 3015);
    CHECK(number([&] { set->setField(L"Title", L"x"); }) == 3020);
    CHECK(number([&] { set->field(L"Title"); }) == 3021);
}

TEST_CASE("a start with the system's DAO alone, and one with no engine at all")
{
    Installation installed;
    Installation::putSetting(L"General", L"AutoCloseMsgBox", false);
    deleteFile(installed.file(L"velorajet.dll"));
    AolHost aol;
    SUBCASE("the system's DAO makes the database")
    {
        const Registered server;
        const Process velora = installed.start();
        CHECK(windowShowing(velora.id(), L"Velora Toolbar"));
        CHECK(fileExists(installed.file(L"data\\wav descriptions.mdb")));
    }
    SUBCASE("none: the user is told, the descriptions stay off, the program goes on")
    {
        const Process velora = installed.start();
        const HWND box = windowShowing(velora.id(), L"Error #429 - Active X cannot create object");
        REQUIRE(box);
        CHECK(drive::press(box, L"OK"));
        CHECK(windowShowing(velora.id(), L"Velora Toolbar"));
        CHECK_FALSE(fileExists(installed.file(L"data\\wav descriptions.mdb")));
    }
}

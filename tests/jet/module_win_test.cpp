// velorajet.dll by its flat interface, as a program that is not linked with the engine calls it.
#include "base/handles.h"
#include "jet/module/velorajet.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

#include <string>

using namespace velora;

namespace {

class Module {
public:
    template <class Function>
    Function* get(const char* name)
    {
        auto* found = reinterpret_cast<Function*>(
            reinterpret_cast<void*>(GetProcAddress(library_.get(), name)));
        const bool there = found != nullptr;
        REQUIRE_MESSAGE(there, name);
        return found;
    }
    explicit operator bool() const { return static_cast<bool>(library_); }

private:
    Library library_{LoadLibraryW(L"velorajet.dll")};
};

#define VJET(name) const auto name = module.get<decltype(::name)>(#name)

} // namespace

// What the program does with the module is tested with its database; here is what it never does.
TEST_CASE("the module answers nonsense with a number and never writes beyond a buffer")
{
    Module module;
    REQUIRE(module);
    VJET(VJetCreateDatabase);
    VJET(VJetOpenDatabase);
    VJET(VJetCloseDatabase);
    VJET(VJetTableName);
    VJET(VJetAppendTable);
    VJET(VJetDeleteTable);
    VJET(VJetOpenRecordset);
    VJET(VJetCloseRecordset);
    VJET(VJetRecordCount);
    VJET(VJetAddNew);
    VJET(VJetSetField);
    VJET(VJetUpdate);
    VJET(VJetGetField);
    VJET(VJetMoveFirst);
    VJET(VJetReason);

    const TempDir dir;
    VJetHandle db = 0, second = 0, set = 0;
    long number = 0, length = 0;
    const std::wstring path = dir.file(L"m.mdb");
    CHECK(VJetOpenDatabase(nullptr, &db) == 3001);
    CHECK(VJetOpenDatabase(dir.file(L"no.mdb").c_str(), &db) == 3024);
    CHECK(VJetOpenDatabase(dir.file(L"no\\no.mdb").c_str(), &db) == 3044);
    REQUIRE(VJetCreateDatabase(path.c_str(), L";LANGID=0x0409;CP=1252;COUNTRY=0", &db) == 0);
    CHECK(VJetOpenDatabase(path.c_str(), &second) == 3045);
    const VJetField fields[] = {{L"Filename", 255, 0}, {L"Title", 255, 0}};
    const VJetIndex index{L"PrimaryKey", L"Filename", 1, 1};
    REQUIRE(VJetAppendTable(db, L"Sounds", fields, 2, &index, 1) == 0);
    CHECK(VJetAppendTable(db, L"SOUNDS", fields, 2, &index, 1) == 3010);
    CHECK(std::string(VJetReason()) != "");
    wchar_t buffer[32] = L"";
    CHECK(VJetTableName(db, 99, buffer, 32, &length) == 3265);

    REQUIRE(VJetOpenRecordset(db, L"Sounds", &set) == 0);
    CHECK(VJetAddNew(set) == 0);
    CHECK(VJetSetField(set, L"Filename", L"a.wav") == 0);
    CHECK(VJetSetField(set, L"Title", L"A title") == 0);
    CHECK(VJetUpdate(set) == 0);
    CHECK(VJetMoveFirst(set) == 0);
    buffer[3] = L'#';
    CHECK(VJetGetField(set, L"Title", buffer, 3, &length) == 0);
    CHECK(length == 7);
    CHECK(buffer[3] == L'#');
    CHECK(VJetCloseRecordset(set) == 0);
    CHECK(VJetRecordCount(set, &number) == 3420);
    CHECK(VJetCloseDatabase(db) == 0);
    CHECK(VJetDeleteTable(db, L"Sounds") == 3420);
}

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

TEST_CASE("the module's operations, end to end")
{
    Module module;
    REQUIRE(module);
    VJET(VJetCreateDatabase);
    VJET(VJetOpenDatabase);
    VJET(VJetCloseDatabase);
    VJET(VJetCompactDatabase);
    VJET(VJetRepairDatabase);
    VJET(VJetTableCount);
    VJET(VJetTableName);
    VJET(VJetAppendTable);
    VJET(VJetRenameTable);
    VJET(VJetDeleteTable);
    VJET(VJetOpenRecordset);
    VJET(VJetCloseRecordset);
    VJET(VJetSetIndex);
    VJET(VJetSeek);
    VJET(VJetMove);
    VJET(VJetPosition);
    VJET(VJetRecordCount);
    VJET(VJetAddNew);
    VJET(VJetEdit);
    VJET(VJetUpdate);
    VJET(VJetDelete);
    VJET(VJetGetField);
    VJET(VJetSetField);
    VJET(VJetReason);

    const TempDir dir;
    const std::wstring path = dir.file(L"m.mdb"), other = dir.file(L"c.mdb");
    VJetHandle db = 0, second = 0, set = 0;
    long number = 0, length = 0;
    REQUIRE(VJetCreateDatabase(path.c_str(), L";LANGID=0x0409;CP=1252;COUNTRY=0", &db) == 0);
    CHECK(VJetOpenDatabase(path.c_str(), &second) == 3045);
    const VJetField fields[] = {{L"Filename", 255, 0}, {L"Title", 255, 0}};
    const VJetIndex index{L"PrimaryKey", L"Filename", 1, 1};
    REQUIRE(VJetAppendTable(db, L"Sounds", fields, 2, &index, 1) == 0);
    CHECK(VJetAppendTable(db, L"SOUNDS", fields, 2, &index, 1) == 3010);
    CHECK(std::string(VJetReason()) != "");
    CHECK(VJetTableCount(db, &number) == 0);
    CHECK(number == 5);
    wchar_t buffer[32] = L"";
    CHECK(VJetTableName(db, 4, buffer, 32, &length) == 0);
    CHECK(std::wstring(buffer) == L"Sounds");
    CHECK(VJetTableName(db, 5, buffer, 32, &length) == 3265);

    REQUIRE(VJetOpenRecordset(db, L"Sounds", &set) == 0);
    for (const wchar_t* name : {L"b.wav", L"a.wav"}) {
        CHECK(VJetAddNew(set) == 0);
        CHECK(VJetSetField(set, L"Filename", name) == 0);
        CHECK(VJetUpdate(set) == 0);
    }
    CHECK(VJetSetIndex(set, L"PrimaryKey") == 0);
    CHECK(VJetSeek(set, L"=", L"B.WAV", &number) == 0);
    CHECK(number == 0);
    CHECK(VJetGetField(set, L"Title", buffer, 32, &length) == 0);
    CHECK(length == -1);
    CHECK(VJetEdit(set) == 0);
    CHECK(VJetSetField(set, L"Title", L"") == 0);
    CHECK(VJetUpdate(set) == 3315);
    CHECK(VJetSetField(set, L"Title", L"A title") == 0);
    CHECK(VJetUpdate(set) == 0);
    CHECK(VJetGetField(set, L"Title", buffer, 3, &length) == 0);
    CHECK(length == 7);
    CHECK(VJetMove(set, -1) == 0);
    CHECK(VJetGetField(set, L"Filename", buffer, 32, &length) == 0);
    CHECK(std::wstring(buffer) == L"a.wav");
    CHECK(VJetDelete(set) == 0);
    CHECK(VJetMove(set, 5) == 0);
    long bof = 1, eof = 0;
    CHECK(VJetPosition(set, &bof, &eof) == 0);
    CHECK(bof == 0);
    CHECK(eof == 1);
    CHECK(VJetRecordCount(set, &number) == 0);
    CHECK(number == 1);
    CHECK(VJetRenameTable(db, L"Sounds", L"Noises") == 0);
    CHECK(VJetCloseRecordset(set) == 0);
    CHECK(VJetRecordCount(set, &number) == 3420);
    CHECK(VJetCloseDatabase(db) == 0);
    CHECK(VJetDeleteTable(db, L"Noises") == 3420);
    CHECK(VJetCompactDatabase(path.c_str(), other.c_str()) == 0);
    CHECK(VJetRepairDatabase(other.c_str(), &number, &length) == 0);
    CHECK(number == 1);
    CHECK(length == 0);
    CHECK(VJetOpenDatabase(nullptr, &db) == 3001);
    CHECK(VJetOpenDatabase(dir.file(L"no.mdb").c_str(), &db) == 3024);
    CHECK(VJetOpenDatabase(dir.file(L"no\\no.mdb").c_str(), &db) == 3044);
}

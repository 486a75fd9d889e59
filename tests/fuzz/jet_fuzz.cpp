// Any bytes opened as a database: every operation answers, or throws JetError; none reads outside
// its page, runs forever or leaves what it cannot open again.
//
// The first byte says what the others are: odd, the file as it stands; even, changes to a sound
// file of some pages: page, place in it (two bytes), number of bytes, the bytes.
#include "support/jet_check.h"
#include "support/jet_memory.h"

#include <cstdint>
#include <cstdlib>

using namespace velora;

namespace {

constexpr wchar_t kPath[] = L"f.mdb";
constexpr int kSteps = 50;

std::string soundFile()
{
    MemoryFiles files;
    const auto db = clsJetDatabase::createDatabase(kPath, kJetLocaleGeneral, files);
    db->beginTrans();
    db->appendTable(descriptionTable(L"A"));
    JetTable two{L"B", {{L"X", kJetText, 20, true}, {L"Y", kJetText, 20}}, {}};
    two.indexes = {{L"ByX", {L"X", L"Y"}}, {L"U", {L"Y"}, true, true}};
    db->appendTable(two);
    const auto a = db->openRecordset(L"A");
    for (int i = 0; i < 30; ++i) {
        a->addNew();
        a->setField(L"Filename", std::wstring(200, L'n') + std::to_wstring(i * 7 % 30));
        a->setField(L"Title", L"title");
        a->update();
    }
    const auto b = db->openRecordset(L"B");
    for (int i = 0; i < 10; ++i) {
        b->addNew();
        b->setField(L"X", std::to_wstring(i / 3));
        b->setField(L"Y", std::to_wstring(i));
        b->update();
    }
    db->commitTrans();
    db->close();
    return *files.files.at(kPath);
}

std::string fileFrom(const std::uint8_t* data, std::size_t size)
{
    static const std::string sound = soundFile();
    if (size == 0)
        return {};
    if (data[0] & 1)
        return std::string(reinterpret_cast<const char*>(data) + 1, size - 1);
    std::string file = sound;
    for (std::size_t i = 1; i + 4 < size;) {
        const std::size_t at = data[i] * 4096u + (data[i + 1] | data[i + 2] << 8) % 4096u;
        const std::size_t count = data[i + 3] % 64u + 1;
        i += 4;
        for (std::size_t k = 0; k < count && i < size; ++k, ++i)
            if (at + k < file.size())
                file[at + k] = static_cast<char>(data[i]);
    }
    return file;
}

template <class Step>
void attempt(const Step& step)
{
    try {
        step();
    } catch (const JetError&) {
    }
}

void useTable(clsJetDatabase& db, const std::wstring& name)
{
    const auto set = db.openRecordset(name);
    const JetTable def = db.tableDef(name);
    const auto fields = set->fieldNames();
    for (const bool forward : {true, false})
        attempt([&] {
            forward ? set->moveFirst() : set->moveLast();
            for (int i = 0; i < kSteps && !set->eof() && !set->bof(); ++i) {
                for (const std::wstring& field : fields)
                    attempt([&] { set->field(field); });
                set->move(forward ? 1 : -1);
            }
        });
    for (const JetIndex& index : def.indexes)
        attempt([&] {
            set->setIndex(index.name);
            set->seek(L"=", std::wstring(200, L'n') + L"5");
            set->seek(L"=", L"1");
        });
    for (int i = 0; i < 4; ++i)
        attempt([&] {
            set->addNew();
            set->setField(fields.front(), std::wstring(200, L'n') + std::to_wstring(100 + i));
            set->setField(fields.back(), L"z" + std::to_wstring(i));
            set->update();
        });
    attempt([&] {
        set->moveFirst();
        set->edit();
        set->setField(fields.back(), std::wstring(18, L'w'));
        set->update();
    });
    attempt([&] {
        set->moveFirst();
        for (int i = 0; i < 20; ++i) {
            set->deleteRecord();
            set->move(1);
        }
    });
}

void use(MemoryFiles& files)
{
    const auto db = clsJetDatabase::openDatabase(kPath, files);
    for (const std::wstring& name : db->tableNames())
        attempt([&] { useTable(*db, name); });
    attempt([&] { db->appendTable(descriptionTable(L"Fresh")); });
    attempt([&] { db->renameTable(L"A", L"Renamed"); });
    attempt([&] { db->deleteTable(L"B"); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    MemoryFiles files;
    files.files[kPath] = std::make_shared<std::string>(fileFrom(data, size));
    MemoryFiles second(files);
    attempt([&] { use(files); });
    attempt([&] { clsJetDatabase::compactDatabase(kPath, L"c.mdb", second); });
    bool repaired = false;
    attempt([&] {
        clsJetDatabase::repairDatabase(kPath, second);
        repaired = true;
    });
    // What repair has called repaired is sound.
    if (repaired && !checkJetFile(second, kPath).empty())
        std::abort();
    return 0;
}

#include "jet/DataPage.h"
#include "jet/FieldRules.h"
#include "jet/RowCodec.h"
#include "support/jet_check.h"

#include "jet/Engine.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::jet;

namespace {

std::string bytes(std::initializer_list<int> values)
{
    std::string text;
    for (const int value : values)
        add8(text, static_cast<unsigned>(value));
    return text;
}

/// ACM long, FInheritable bool, ObjectId long, SID binary.
TableDef acesLike()
{
    TableDef def;
    def.maxColumns = 4;
    def.varColumns = 1;
    const auto column = [&](Byte type, int number, int fixedAt, int size, bool fixed) {
        Column c;
        c.type = type;
        c.number = static_cast<std::uint16_t>(number);
        c.fixedAt = static_cast<std::uint16_t>(fixedAt);
        c.size = static_cast<std::uint16_t>(size);
        c.flags = fixed ? kFixedFlag | kUpdatableFlag : kUpdatableFlag;
        def.columns.push_back(c);
    };
    column(kLongColumn, 2, 4, 4, true);
    column(kBoolColumn, 3, 0, 1, true);
    column(kLongColumn, 0, 0, 4, true);
    column(kBinaryColumn, 1, 0, 510, false);
    return def;
}

} // namespace

TEST_CASE("a row is laid out as the real engine lays it out")
{
    // The row of the catalogue's rights: object 2, rights 60000 (hex), administrator.
    const std::string row =
        bytes({4, 0, 2, 0, 0, 0, 0, 0, 6, 0, 0x64, 0x8B, 0x0C, 0, 0x0A, 0, 1, 0, 7});
    const TableDef def = acesLike();
    const Record record = decodeRow(def, Bytes(row));
    CHECK(decodeLong(*record[0]) == 0x60000);
    CHECK(record[1] == bytes({0}));
    CHECK(decodeLong(*record[2]) == 2);
    CHECK(record[3] == bytes({0x64, 0x8B}));
    CHECK(encodeRow(def, record) == row);
}

TEST_CASE("nulls, bools and young columns")
{
    const TableDef def = acesLike();
    const Record record{std::nullopt, bytes({1}), encodeLong(-7), std::nullopt};
    const std::string row = encodeRow(def, record);
    CHECK(decodeRow(def, Bytes(row)) == record);

    // A row from before SID and the two others were added.
    TableDef old = def;
    old.maxColumns = 1;
    old.varColumns = 1;
    old.columns = {def.columns[2]};
    const std::string older = encodeRow(old, {encodeLong(5)});
    const Record read = decodeRow(def, Bytes(older));
    CHECK(read[2] == encodeLong(5));
    CHECK_FALSE(read[0].has_value());
    CHECK_FALSE(read[3].has_value());
    CHECK(read[1] == bytes({0}));
}

TEST_CASE("text is read plain and compressed, written plain")
{
    CHECK(decodeText(std::string_view("a\0b\0", 4)) == L"ab");
    CHECK(decodeText("\xFF\xFE"
                     "abc\xE9")
          == L"abc\u00E9");
    CHECK(decodeText(std::string_view("\xFF\xFE"
                                      "a\0\x16\x04\0b",
                                      8))
          == L"a\u0416b");
    CHECK(decodeText(std::string_view("\xFF\xFE\0\x16", 4)) == L"");
    CHECK(decodeText("\xFF\xFE") == L"");
    CHECK(encodeText(L"a\u0416") == std::string("a\0\x16\x04", 4));
}

TEST_CASE("a page is full at 255 rows or when no byte is left")
{
    Page page;
    makeDataPage(page, 15);
    while (hasRoomFor(page, 1))
        addRow(page, Bytes(std::string_view("r")));
    CHECK(rowsOf(page) == 255);
    makeDataPage(page, 15);
    CHECK_FALSE(hasRoomFor(page, kMaxRow + 1));
    addRow(page, Bytes(std::string(kMaxRow, 'x')));
    CHECK(freeBytes(page) == 20);
    CHECK_FALSE(hasRoomFor(page, 19));
    CHECK(canReplace(page, 0, kMaxRow));
    CHECK_FALSE(canReplace(page, 0, kMaxRow + 1));
}

TEST_CASE("a description table's definition has the real engine's measures")
{
    const NewTable table = newTable(descriptionTable(L"AOL Sounds"));
    const std::string def = renderTableDef(table.def);
    CHECK(def.size() == 509);
    Page page;
    writeTableDef(page, def);
    CHECK(page.u16(2) == 3579);
    CHECK(page.u32(8) == 509);
    CHECK(page.u8(63 + 12 + 8 * 25 + 130 + 46) == 0x89);
}

TEST_CASE("field properties come back, and nonsense gives none")
{
    const std::string blob = renderFieldRules({{L"Filename", false, true}, {L"Year", true, false}});
    CHECK(blob.substr(0, 4) == std::string("MR2\0", 4));
    const auto rules = readFieldRules(blob);
    REQUIRE(rules.size() == 2);
    CHECK(rules[0].field == L"Filename");
    CHECK_FALSE(rules[0].allowZeroLength);
    CHECK(rules[0].required);
    CHECK(rules[1].allowZeroLength);
    CHECK_FALSE(rules[1].required);
    CHECK(readFieldRules("").empty());
    for (std::size_t at = 4; at < blob.size(); ++at)
        for (const int value : {0, 1, 127, 255}) {
            std::string broken = blob;
            broken[at] = static_cast<char>(value);
            readFieldRules(broken);
            readFieldRules(std::string_view(blob).substr(0, at));
        }
}

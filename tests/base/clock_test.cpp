#include "base/clock.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("dates in file names are mm-dd-yy")
{
    CHECK(fileDate({2026, 3, 9, 1, 2, 3}) == L"03-09-26");
    CHECK(fileDate({1999, 12, 31}) == L"12-31-99");
    CHECK(fileDate({2000, 1, 1}) == L"01-01-00");
}

TEST_CASE("the date serial counts from 30 December 1899")
{
    CHECK(dateSerial({1899, 12, 30}) == 0);
    CHECK(dateSerial({1900, 3, 1}) == 61);
    CHECK(dateSerial({2000, 2, 29}) == 36585);
    CHECK(dateSerial({2000, 3, 1}) == 36586);
    CHECK(dateSerial({2026, 11, 22}) == 46348);
}

#include "core/modErrorLog.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("an error is one line, whatever stands in it")
{
    const DateTime when{2026, 3, 4, 5, 6, 7};
    CHECK(errorLogLine(when, {"modFade", "MakeFade", "out of memory", 8})
          == "2026-03-04 05:06:07\tmodFade\tMakeFade\t8\tout of memory\r\n");
    CHECK(errorLogLine(when, {"m", "p", "a\r\nb\tc\x01", 0})
          == "2026-03-04 05:06:07\tm\tp\t0\ta  b c \r\n");
    CHECK(errorLogLine(when, {nullptr, nullptr, nullptr, 0}) == "2026-03-04 05:06:07\t\t\t0\t\r\n");
    const std::string endless(100000, 'x');
    CHECK(errorLogLine(when, {"m", "p", endless.c_str(), 0}).size() < 1100);
}

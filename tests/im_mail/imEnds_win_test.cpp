// The real velora.exe holds IMs when it, or AOL, is killed.
#include "base/clock.h"
#include "base/clsFileOp.h"
#include "core/modFindChild.h"
#include "im_mail/modIMLog.h"
#include "support/aolhost_win.h"
#include "support/drive_win.h"
#include "support/imbench_win.h"
#include "support/install_win.h"

#include <algorithm>
#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

constexpr int kIMs = 10;
/// ms after the kill in which AOL has all of its windows again.
constexpr unsigned kBackWithin = 1000;

std::wstring nameOf(int index)
{
    return L"Member" + std::to_wstring(index);
}
std::wstring firstWords(int index)
{
    return L"first words of " + nameOf(index);
}

struct Scene {
    Installation installed;
    AolHost host;
    Process velora;
    std::vector<HWND> ims;

    Scene()
    {
        Installation::putSetting(L"General", L"AutoCloseMsgBox", false);
        for (int i = 0; i < kIMs; ++i)
            host.command(L"im " + nameOf(i) + L": " + firstWords(i));
        for (int i = 0; i < kIMs; ++i)
            ims.push_back(host.document(L": " + nameOf(i)));
        start();
    }
    void start()
    {
        velora = installed.start();
        REQUIRE(drive::window(L"Velora Toolbar", 30000));
        REQUIRE(waitFor([&] { return inAol() == 0; }));
        REQUIRE(waitFor([&] { return IMBench::count(log(kIMs - 1), kBeginImLabel) == 1; }));
    }
    /// How many of the IMs are where AOL has them, to be seen and with their text.
    long inAol()
    {
        return std::count_if(ims.begin(), ims.end(), [&](HWND im) {
            const auto index = static_cast<int>(&*std::find(ims.begin(), ims.end(), im) - &ims[0]);
            return GetAncestor(im, GA_PARENT) == host.mdi() && IsWindowVisible(im)
                   && textOf(childOfClass(im, L"RICHCNTL")).find(firstWords(index))
                          != std::wstring::npos;
        });
    }
    std::wstring log(int index) const
    {
        return clsFileOp::ReadTextFromFile(
            imLogPath(installed.folder() + L"\\im logs", nameOf(index), true, now()));
    }
    bool logged(int index, std::wstring_view text) const
    {
        return waitFor([&] { return IMBench::count(log(index), text) == 1; });
    }
};

} // namespace

TEST_CASE_FIXTURE(Scene, "killed, Velora leaves every IM in AOL; started again, it goes on")
{
    CHECK(inAol() == 0);
    velora.kill();
    CHECK(waitFor([&] { return inAol() == kIMs; }, kBackWithin));
    for (int i = 0; i < kIMs; ++i)
        CHECK(logged(i, firstWords(i)));

    start();
    host.command(L"im Member3: more words");
    CHECK(logged(3, L"more words"));
    CHECK(logged(3, firstWords(3)));

    // Killed while AOL hangs: as soon as AOL is back, so are they.
    host.command(L"hang 700");
    velora.kill();
    CHECK(waitFor([&] { return inAol() == kIMs; }));
}

TEST_CASE_FIXTURE(Scene, "when AOL is killed Velora ends, and what was said is in the logs")
{
    for (int i = 0; i < kIMs; ++i)
        host.command(L"im " + nameOf(i) + L": last words");
    CHECK(waitFor([&] {
        for (int i = 0; i < kIMs; ++i)
            if (IMBench::count(log(i), L"last words") != 1)
                return false;
        return true;
    }));
    host.kill();
    CHECK(velora.ended());
    for (int i = 0; i < kIMs; ++i) {
        CHECK(IMBench::count(log(i), firstWords(i)) == 1);
        CHECK(IMBench::count(log(i), L"last words") == 1);
        CHECK(IMBench::count(log(i), L"\r\nEnd IM - ") == 1);
    }
    CHECK(installed.log().empty());
}

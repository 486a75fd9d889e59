#include "sounds/frmProcessing.h"

#include "base/trap.h"
#include "ui/MessageLoop.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmProcessing";
constexpr int kFull = 1000;
constexpr DWORD kShowEach = 40; // ms
constexpr Size kLabelSize{280, 0};

} // namespace

bool frmProcessing::run(Work work)
{
    frmProcessing form(std::move(work));
    return form.runModal() == IDOK && !form.cancelled_;
}

FormOptions frmProcessing::options() const
{
    FormOptions options;
    options.title = L"Velora - Processing";
    return options;
}

void frmProcessing::onCreate()
{
    lblWorking.create(*this, L"Working...");
    pbarProgress.create(*this, kFull);
    cmdCancel.create(*this, L"Cancel", [this] {
        cancelled_ = true;
        cmdCancel.enable(false);
    });
    setCancelButton(cmdCancel);
    lblWorking.setPreferredSize(kLabelSize);
    setLayout(rows({lblWorking, pbarProgress, buttonRowCentred({cmdCancel})}).margins());
    tmrStart.startOnce(1, [this] { start(); });
}

void frmProcessing::start()
{
    trap(kModule,
         [&] { work_([this](std::size_t done, std::size_t all) { return step(done, all); }); });
    if (isOpen())
        endModal(IDOK);
}

bool frmProcessing::step(std::size_t done, std::size_t all)
{
    const DWORD tick = GetTickCount();
    if (isOpen() && tick - shownAt_ >= kShowEach) {
        shownAt_ = tick;
        if (all > 0)
            pbarProgress.setValue(static_cast<int>(done * kFull / all));
        lblWorking.setText(L"Working...  " + std::to_wstring(done) + L" of "
                           + std::to_wstring(all));
        doEvents();
    }
    return isOpen() && !cancelled_;
}

} // namespace velora

#pragma once
// The options window: a list of pages, the page chosen, and OK, Cancel and Apply. Nothing is
// written before OK or Apply; what is set elsewhere meanwhile shows here unless the user has
// touched it.
#include "core/clsOptionsModel.h"
#include "core/frmOptionPage.h"

#include <memory>
#include <string_view>
#include <vector>

namespace velora {

class frmOptions final : public Form {
public:
    frmOptions();
    /// Opens the window, or brings it to the front, at this page; without one at the page that was
    /// the last.
    static void showOptions(std::wstring_view page = {});

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;

private:
    /// Where the pages lie, one over the other.
    class PageArea final : public Placeable {
    public:
        explicit PageArea(frmOptions& form) : form_(form) {}
        Size preferredSize() const override;
        void place(const Rect& where) override;
        /// Only the page that is shown is laid out.
        void placePage();

    private:
        frmOptions& form_;
        Rect where_;
    };

    void createPages();
    void choosePage(std::size_t page);
    void choosePage(std::wstring_view name);
    void step(int by);
    void refresh();
    void restoreDefaults();
    /// Writes what has been changed. False when something is refused; the user has been told then.
    bool keep();

    const std::vector<OptionPage>& table_ = optionPages();
    clsOptionsModel model_;
    std::vector<std::unique_ptr<frmOptionPage>> pages_;
    std::size_t page_ = 0;
    OptionSubscription changes_;

    Label lblPages, lblTitle, lblAbout;
    ListBox lstPages;
    Divider dvdHead, dvdFoot;
    PageArea area_;
    Button cmdDefaults, cmdOK, cmdCancel, cmdApply;
    ToolTip tips_;
};

} // namespace velora

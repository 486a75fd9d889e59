#include "core/frmOptions.h"

#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modWindowPlace.h"
#include "ui/Fonts.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmOptions";
constexpr wchar_t kTitle[] = L"Options";
constexpr wchar_t kSection[] = L"Options", kPageKey[] = L"Page";
constexpr int kListWidth = 124;

int widestAbout(const std::vector<OptionPage>& pages)
{
    int widest = 0;
    for (const OptionPage& page : pages)
        widest = std::max(widest, textSize(uiFont(), page.about).width);
    return widest;
}

} // namespace

Size frmOptions::PageArea::preferredSize() const
{
    Size most;
    for (const auto& page : form_.pages_) {
        const Size size = page->wantedSize();
        most = {std::max(most.width, size.width), std::max(most.height, size.height)};
    }
    return most;
}

void frmOptions::PageArea::place(const Rect& where)
{
    where_ = where;
    placePage();
}

void frmOptions::PageArea::placePage()
{
    form_.pages_[form_.page_]->setPlace(where_);
}

frmOptions::frmOptions() : Form(kModule), model_(table_), area_(*this) {}

void frmOptions::showOptions(std::wstring_view page)
{
    trap(kModule, [&] {
        frmOptions* form = find<frmOptions>();
        if (!form) {
            form = &open<frmOptions>();
            if (page.empty())
                form->choosePage(readSetting(kSection, kPageKey, L""));
        }
        form->choosePage(page);
        form->bringToFront();
    });
}

FormOptions frmOptions::options() const
{
    FormOptions options;
    options.title = L"Velora - Options";
    options.minimizeBox = true;
    options.place = rememberedPlace(kSection);
    return options;
}

void frmOptions::onCreate()
{
    lblPages.create(*this, L"&Pages:");
    std::vector<std::wstring> names;
    for (const OptionPage& page : table_)
        names.push_back(page.name);
    lstPages.create(*this, names);
    lstPages.setPreferredSize({kListWidth, 0});
    lstPages.onSelect = [this] {
        if (lstPages.selected() >= 0)
            choosePage(static_cast<std::size_t>(lstPages.selected()));
    };
    lblTitle.create(*this, table_[0].name);
    lblTitle.setFont(uiFont({.bold = true}));
    lblAbout.create(*this, table_[0].about);
    lblAbout.setPreferredSize({widestAbout(table_), 0});
    dvdHead.create(*this);
    createPages();
    dvdFoot.create(*this);
    cmdDefaults.create(*this, L"&Restore Defaults...", [this] { restoreDefaults(); });
    tips_.add(cmdDefaults, L"Puts this page back to what it was when Velora was new");
    cmdOK.create(*this, L"OK", [this] {
        if (keep())
            close();
    });
    cmdCancel.create(*this, L"Cancel", [this] { close(CloseReason::user); });
    cmdApply.create(*this, L"&Apply", [this] { keep(); });
    tips_.add(cmdApply, L"Takes the changes over and leaves the window open");
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    setFirstFocus(lstPages);
    addKey(MOD_CONTROL, VK_TAB, [this] { step(1); });
    addKey(MOD_CONTROL | MOD_SHIFT, VK_TAB, [this] { step(-1); });
    addKey(MOD_CONTROL, VK_NEXT, [this] { step(1); });
    addKey(MOD_CONTROL, VK_PRIOR, [this] { step(-1); });

    const Box left = rows({lblPages, grow(lstPages)}, kNear);
    const Box head = rows({lblTitle, lblAbout, dvdHead}, kNear);
    setLayout(rows({columns({left, rows({head, grow(area_)}).grow()}, kMargin).grow(), dvdFoot,
                    columns({cmdDefaults, space(), buttonRow({cmdOK, cmdCancel, cmdApply})})})
                  .margins());
    choosePage(0);
    // A place that was kept may be that of another font, or of fewer options.
    fitToLayout();
    changes_ = onOptionChanged([this](OptionId option) {
        model_.follow(option);
        refresh();
    });
}

void frmOptions::createPages()
{
    clsOptionsModel::Index first = 0;
    for (const OptionPage& page : table_) {
        pages_.push_back(
            std::make_unique<frmOptionPage>(hwnd(), page, model_, first, [this] { refresh(); }));
        pages_.back()->create();
        first = pages_.back()->end();
    }
}

void frmOptions::choosePage(std::wstring_view name)
{
    for (std::size_t i = 0; i < table_.size(); ++i)
        if (equalNoCase(table_[i].name, name))
            choosePage(i);
}

void frmOptions::choosePage(std::size_t page)
{
    if (page != page_)
        pages_[page_]->show(false);
    page_ = page;
    if (lstPages.selected() != static_cast<int>(page))
        lstPages.select(static_cast<int>(page));
    lblTitle.setText(table_[page].name);
    lblAbout.setText(table_[page].about);
    area_.placePage();
    refresh();
    pages_[page]->show();
}

void frmOptions::step(int by)
{
    const int count = static_cast<int>(pages_.size());
    lstPages.focus(); // what had the focus may be on the page that goes
    choosePage(static_cast<std::size_t>((static_cast<int>(page_) + by + count) % count));
}

void frmOptions::refresh()
{
    if (!isOpen())
        return;
    // The other pages are brought up to date when they are chosen.
    pages_[page_]->refresh();
    if (!model_.changed() && cmdApply.focused())
        cmdOK.focus(); // a button that is disabled would keep the keys
    cmdApply.enable(model_.changed());
}

void frmOptions::restoreDefaults()
{
    const std::wstring& name = table_[page_].name;
    if (MsgBoxEx(L"Do you want to put all options of the page ~B" + name
                     + L"~B back to what they were when Velora was new?~N ~NThey are kept when you "
                       L"click ~BOK~B or ~BApply~B.",
                 kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kTitle)
            != kAnswerYes
        || !isOpen())
        return;
    model_.restoreDefaults(page_);
    refresh();
}

bool frmOptions::keep()
{
    for (const auto& page : pages_)
        page->commit();
    if (const auto wrong = model_.refused()) {
        const auto& entry = model_.entries()[*wrong];
        choosePage(entry.page);
        MsgBoxEx(fieldRefusal(*entry.field), kMsgExclamation, kTitle);
        if (isOpen())
            pages_[entry.page]->focusField(*wrong);
        return false;
    }
    const bool saved = model_.save();
    refresh();
    if (!saved)
        MsgBoxEx(L"~B~CRNot all options can be kept.~B~CN~N ~NWindows does not let Velora write "
                 L"its settings. They hold until Velora ends.",
                 kMsgExclamation, kTitle);
    return saved && isOpen();
}

bool frmOptions::onClose(CloseReason)
{
    rememberPlace(kSection, place());
    trap(kModule, [&] { writeSetting(kSection, kPageKey, table_[page_].name); });
    return true;
}

} // namespace velora

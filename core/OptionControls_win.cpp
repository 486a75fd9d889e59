#include "core/OptionControls.h"

#include "base/text.h"
#include "core/ColourWell.h"
#include "core/MsgBoxEx.h"
#include "core/modHotWordList.h"
#include "core/modSettingsFile.h"
#include "ui/Fonts.h"

#include <commdlg.h>

#include <algorithm>

namespace velora {
namespace {

constexpr Size kNumber{60, 0};
constexpr Size kWell{48, 24};
constexpr int kWellFrame = 4;   // the button's own, around its picture
constexpr int kComboFrame = 32; // the arrow and the edges
constexpr int kLeastCombo = 130;

class CheckOption final : public OptionControl {
public:
    Box create(Form& page, const OptionField& field, ToolTip& tips) override
    {
        chkOption.create(page, field.caption);
        chkOption.onChange = [this] { changed(textOf(RegValue(chkOption.checked()))); };
        tips.add(chkOption, field.tip);
        return Box(chkOption).align(Align::start);
    }
    void enable(bool enabled) override { chkOption.enable(enabled); }
    void focus() override { chkOption.focus(); }

protected:
    void display(const std::wstring& text) override
    {
        chkOption.setChecked(asBoolean(RegValue(text)).value_or(false));
    }

private:
    CheckBox chkOption;
};

/// A label with something behind it.
class LabelledOption : public OptionControl {
public:
    Label* label() final { return &lblOption; }

protected:
    Box labelled(Form& page, const OptionField& field, const std::function<Box()>& rest)
    {
        lblOption.create(page, field.caption);
        const Box behind = rest();
        return columns({Box(lblOption).align(Align::middle), behind.grow()});
    }
    Label lblOption;
};

/// Numbers, seconds, texts.
class EditOption : public LabelledOption {
public:
    Box create(Form& page, const OptionField& field, ToolTip& tips) override
    {
        return labelled(page, field, [&] { return createEdit(page, field, tips); });
    }
    void enable(bool enabled) override
    {
        for (Control* control :
             {static_cast<Control*>(&lblOption), static_cast<Control*>(&txtOption),
              static_cast<Control*>(&lblUnit)})
            control->enable(enabled);
    }
    void focus() override
    {
        txtOption.focus();
        txtOption.select();
    }

protected:
    Box createEdit(Form& page, const OptionField& field, ToolTip& tips)
    {
        const bool number = field.kind == FieldKind::number || field.kind == FieldKind::seconds;
        Edit::Options options;
        options.maxLength = number ? 8 : static_cast<int>(field.most);
        txtOption.create(page, {}, options);
        txtOption.onChange = [this] { changed(txtOption.text()); };
        tips.add(txtOption, field.tip);
        if (!number)
            return grow(txtOption);
        txtOption.setPreferredSize(kNumber);
        lblUnit.create(page, field.unit);
        return columns({txtOption, Box(lblUnit).align(Align::middle), space()});
    }
    void display(const std::wstring& text) override { txtOption.setText(text); }

    Edit txtOption;
    Label lblUnit;
};

class SoundOption final : public EditOption {
public:
    Box create(Form& page, const OptionField& field, ToolTip& tips) override
    {
        return labelled(page, field, [&] {
            const Box edit = createEdit(page, field, tips);
            cmdBrowse.create(page, L"Browse...", [this] { browse(); });
            tips.add(cmdBrowse, L"Choose a sound file");
            return columns({edit.grow(), cmdBrowse});
        });
    }
    void enable(bool enabled) override
    {
        EditOption::enable(enabled);
        cmdBrowse.enable(enabled);
    }

private:
    void browse()
    {
        wchar_t path[MAX_PATH] = L"";
        OPENFILENAMEW wish = {};
        wish.lStructSize = sizeof wish;
        wish.hwndOwner = GetAncestor(cmdBrowse.hwnd(), GA_ROOT);
        wish.lpstrFilter = L"Sounds\0*.wav;*.mid;*.mp3\0All files\0*.*\0";
        wish.lpstrFile = path;
        wish.nMaxFile = MAX_PATH;
        wish.lpstrTitle = L"Choose a Sound";
        wish.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
        if (GetOpenFileNameW(&wish) && txtOption.hwnd())
            txtOption.setText(path);
    }

    Button cmdBrowse;
};

class ChoiceOption final : public LabelledOption {
public:
    Box create(Form& page, const OptionField& field, ToolTip& tips) override
    {
        field_ = &field;
        return labelled(page, field, [&] {
            std::vector<std::wstring> captions;
            int width = kLeastCombo;
            for (const FieldChoice& choice : field.choices) {
                captions.push_back(choice.caption);
                width = std::max(width, textSize(uiFont(), choice.caption).width + kComboFrame);
            }
            cboOption.create(page, captions);
            cboOption.setPreferredSize({width, 0});
            cboOption.onChange = [this] {
                if (const int at = cboOption.selected(); at >= 0)
                    changed(field_->choices[static_cast<std::size_t>(at)].value);
            };
            tips.add(cboOption, field.tip);
            return columns({cboOption, space()});
        });
    }
    void enable(bool enabled) override
    {
        lblOption.enable(enabled);
        cboOption.enable(enabled);
    }
    void focus() override { cboOption.focus(); }

protected:
    void display(const std::wstring& text) override
    {
        const auto chosen = choiceOf(*field_, text);
        cboOption.select(chosen ? static_cast<int>(*chosen) : -1);
    }

private:
    const OptionField* field_ = nullptr;
    ComboBox cboOption;
};

class ColourOption final : public LabelledOption {
public:
    Box create(Form& page, const OptionField& field, ToolTip& tips) override
    {
        return labelled(page, field, [&] {
            std::wstring name = withoutMnemonic(field.caption);
            name.pop_back(); // the colon
            cmdColour.create(page, name, nullptr, [this] { choose(); });
            cmdColour.setPreferredSize(kWell);
            cmdColour.setPainter([this](HDC dc, const Rect& where, const ButtonState& state) {
                drawColourWell(dc, where, state.disabled ? std::nullopt : std::optional(colour()));
            });
            tips.add(cmdColour, field.tip);
            // The picture stands where the other controls begin.
            return columns({Box(cmdColour).margins(-kWellFrame, 0, 0, 0), space()});
        });
    }
    void enable(bool enabled) override
    {
        lblOption.enable(enabled);
        cmdColour.enable(enabled);
        cmdColour.redraw();
    }
    void focus() override { cmdColour.focus(); }

protected:
    void display(const std::wstring& text) override
    {
        value_ = text;
        cmdColour.redraw();
    }

private:
    COLORREF colour() const { return systemColour(parseLong(value_).value_or(0)); }
    void choose()
    {
        const auto chosen = pickColour(GetAncestor(cmdColour.hwnd(), GA_ROOT), colour());
        if (!chosen || !cmdColour.hwnd())
            return;
        display(std::to_wstring(static_cast<long>(*chosen)));
        changed(value_);
    }

    std::wstring value_;
    ImageButton cmdColour;
};

/// Enter adds the word that is typed; an empty box leaves it to the window.
class WordEdit final : public Edit {
public:
    void create(Form& form)
    {
        Options options;
        options.maxLength = kLongestHotWord;
        Edit::create(form, {}, options);
        subclass();
    }
    std::function<void()> onEnter;

protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM) override
    {
        const bool enter = wParam == VK_RETURN && !trimView(text()).empty();
        if (message == WM_GETDLGCODE && enter)
            return DLGC_WANTALLKEYS | DLGC_HASSETSEL;
        if (message == WM_CHAR && wParam == VK_RETURN)
            return 0; // it would beep
        if (message != WM_KEYDOWN || !enter)
            return std::nullopt;
        onEnter();
        return 0;
    }
};

class WordList final : public ListBox {
public:
    void create(Form& form)
    {
        ListBox::create(form);
        subclass();
    }
    std::function<void()> onDelete;

protected:
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM) override
    {
        if (message != WM_KEYDOWN || wParam != VK_DELETE)
            return std::nullopt;
        onDelete();
        return 0;
    }
};

class WordsOption final : public OptionControl {
public:
    Box create(Form& page, const OptionField& field, ToolTip& tips) override
    {
        lblWord.create(page, L"New &word:");
        txtWord.create(page);
        txtWord.onChange = [this] { refresh(); };
        txtWord.onEnter = [this] { add(); };
        cmdAdd.create(page, L"A&dd", [this] { add(); });
        lblWords.create(page, field.caption);
        lstWords.create(page);
        lstWords.onSelect = [this] { refresh(); };
        lstWords.onActivate = [this] { takeOut(); };
        lstWords.onDelete = [this] { remove(); };
        cmdRemove.create(page, L"Re&move", [this] { remove(); });
        tips.add(txtWord, field.tip);
        tips.add(lstWords, L"Double-click a word to change it");
        const Box buttons = rows({cmdRemove, space()});
        return rows({rows({lblWord, columns({grow(txtWord), cmdAdd})}, kNear),
                     rows({lblWords, grow(columns({grow(lstWords), buttons}))}, kNear).grow()})
            .grow();
    }
    void enable(bool) override {}
    void focus() override { txtWord.focus(); }
    void commit() override
    {
        if (!trimView(txtWord.text()).empty() && !holds(trim(txtWord.text())))
            add();
    }

protected:
    void display(const std::wstring& text) override
    {
        words_ = splitLines(text);
        lstWords.setItems(words_);
        refresh();
    }

private:
    bool holds(const std::wstring& word) const
    {
        return std::find(words_.begin(), words_.end(), word) != words_.end();
    }
    void refresh()
    {
        cmdAdd.enable(!trimView(txtWord.text()).empty());
        cmdRemove.enable(lstWords.selected() >= 0);
    }
    void add()
    {
        const std::wstring word = trim(txtWord.text());
        if (word.empty())
            return;
        if (!holds(word)) {
            if (words_.size() >= kMostHotWords) {
                MsgBoxEx(L"~B~CRThe list is full!~B~CN~N ~NPlease remove a word before you add "
                         L"another one.",
                         kMsgExclamation, L"Options");
                return;
            }
            words_.push_back(word);
            tell();
        }
        lstWords.select(
            static_cast<int>(std::find(words_.begin(), words_.end(), word) - words_.begin()));
        txtWord.setText(L"");
        txtWord.focus();
    }
    std::wstring remove()
    {
        const int at = lstWords.selected();
        if (at < 0)
            return {};
        const std::wstring word = words_[static_cast<std::size_t>(at)];
        const bool focused = cmdRemove.focused();
        words_.erase(words_.begin() + at);
        tell();
        lstWords.select(std::min(at, static_cast<int>(words_.size()) - 1));
        refresh();
        if (focused && words_.empty())
            txtWord.focus(); // the button cannot be pressed any more
        return word;
    }
    void takeOut()
    {
        const std::wstring word = remove();
        txtWord.setText(word);
        txtWord.focus();
        txtWord.select();
    }
    void tell()
    {
        std::wstring text;
        for (const std::wstring& word : words_)
            text += (text.empty() ? L"" : L"\n") + word;
        lstWords.setItems(words_);
        changed(text);
    }

    std::vector<std::wstring> words_;
    Label lblWord, lblWords;
    WordEdit txtWord;
    WordList lstWords;
    Button cmdAdd, cmdRemove;
};

class FileOption final : public OptionControl {
public:
    Box create(Form& page, const OptionField& field, ToolTip& tips) override
    {
        lblOption.create(page, field.caption);
        cmdSave.create(page, L"&Save Settings...", [this] { saveSettings(window()); });
        cmdLoad.create(page, L"&Load Settings...", [this] {
            if (loadSettings(window()) && onReplaced)
                onReplaced();
        });
        tips.add(cmdSave, field.tip);
        tips.add(cmdLoad, L"You are asked before yours are replaced, and a copy of them is kept");
        return rows({lblOption, columns({columns({cmdSave, cmdLoad}).sameSizes(), space()})});
    }
    void enable(bool) override {}
    void focus() override { cmdSave.focus(); }

protected:
    void display(const std::wstring&) override {}

private:
    HWND window() const { return GetAncestor(cmdSave.hwnd(), GA_ROOT); }

    Label lblOption;
    Button cmdSave, cmdLoad;
};

} // namespace

void OptionControl::show(const std::wstring& text)
{
    if (filled_ && text == shown_)
        return;
    filled_ = true;
    shown_ = text;
    filling_ = true; // an edit box tells of every change
    display(text);
    filling_ = false;
}

void OptionControl::changed(const std::wstring& text)
{
    if (filling_)
        return;
    shown_ = text;
    if (onChange)
        onChange(text);
}

std::unique_ptr<OptionControl> makeOptionControl(FieldKind kind)
{
    switch (kind) {
    case FieldKind::check: return std::make_unique<CheckOption>();
    case FieldKind::choice: return std::make_unique<ChoiceOption>();
    case FieldKind::colour: return std::make_unique<ColourOption>();
    case FieldKind::sound: return std::make_unique<SoundOption>();
    case FieldKind::file: return std::make_unique<FileOption>();
    case FieldKind::words: return std::make_unique<WordsOption>();
    default: return std::make_unique<EditOption>();
    }
}

} // namespace velora

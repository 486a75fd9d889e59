// The tag editor, as a user fills it in, saves, and takes the save back.
#include "sounds/frmTagEdit.h"

#include "base/files.h"
#include "core/MsgBoxEx.h"
#include "support/answer_win.h"
#include "support/drive_win.h"
#include "support/form_scope_win.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

constexpr wchar_t kBox[] = L"Velora - Tag Editor";

/// An editor over a file with these bytes. Its controls are reached by their names.
struct Editor : FormScope {
    Editor(const wchar_t* name, const std::string& bytes) : path(folder.file(name))
    {
        replaceFile(path, bytes);
        reopen();
    }
    void reopen()
    {
        form = &Form::open<frmTagEdit>(path, folder.file(L"tag undo.dat"));
        form->show();
        window = form->hwnd();
    }
    /// The edit or list behind a label.
    HWND field(const wchar_t* label) const
    {
        return GetWindow(drive::child(window, label), GW_HWNDNEXT);
    }
    void fill(const wchar_t* label, const wchar_t* text) const
    {
        SetWindowTextW(field(label), text);
    }
    void click(const wchar_t* button) const
    {
        REQUIRE(IsWindowEnabled(drive::child(window, button)));
        SendMessageW(drive::child(window, button), BM_CLICK, 0, 0);
    }
    std::string content() const { return readFile(path).value_or("(missing)"); }

    TempDir folder;
    std::wstring path;
    frmTagEdit* form = nullptr;
    HWND window = nullptr;
};

std::string tagOf(const std::string& title, char genre)
{
    std::string tag = "TAG" + title;
    tag.resize(127, '\0');
    return tag + genre;
}

} // namespace

TEST_CASE("a tag is appended to a wav, read back, and taken away again")
{
    const std::string sound(6000, 's');
    Editor editor(L"new.wav", sound);
    CHECK_FALSE(IsWindowEnabled(drive::child(editor.window, L"Undo")));
    editor.fill(L"Title:", L"Gr\u00FC\u00DFe");
    editor.fill(L"Year:", L"1999");
    editor.fill(L"Lyrics:", L"la\r\nla");
    SendMessageW(editor.field(L"Genre:"), CB_SELECTSTRING, static_cast<WPARAM>(-1),
                 reinterpret_cast<LPARAM>(L"Synth Pop"));
    editor.click(L"Save");
    CHECK(editor.content().size() == sound.size() + 5101);
    clsMP3 tag;
    tag.GetTag(editor.path);
    tag.GetLyrics(editor.path);
    CHECK(tag.Title().starts_with(L"Gr\u00FC\u00DFe  "));
    CHECK(tag.Year() == L"1999");
    CHECK(tag.Genre() == 147);
    CHECK(tag.Lyrics().starts_with(L"la\r\nla  "));
    CHECK(editor.form->fileChanged());

    editor.form->close();
    editor.reopen();
    CHECK(drive::text(editor.field(L"Title:")) == L"Gr\u00FC\u00DFe");
    CHECK(drive::text(editor.field(L"Lyrics:")) == L"la\r\nla");
    editor.click(L"Undo");
    CHECK(editor.content() == sound);
    CHECK(drive::text(editor.field(L"Title:")).empty());
    CHECK_FALSE(IsWindowEnabled(drive::child(editor.window, L"Undo")));
}

TEST_CASE("in an mp3 the tag takes the place of 128 bytes, and Undo brings them back")
{
    const std::string sound(6000, 's');
    Editor editor(L"new.mp3", sound);
    editor.fill(L"Artist:", L"Somebody");
    editor.click(L"Save");
    CHECK(editor.content().size() == sound.size());
    CHECK(editor.content().substr(6000 - 128, 3) == "TAG");
    CHECK(static_cast<unsigned char>(editor.content().back()) == 12); // no genre chosen: Other
    editor.click(L"Undo");
    CHECK(editor.content() == sound);
}

TEST_CASE("what the user does not change stays byte for byte, an unknown genre too")
{
    Editor editor(L"old.mp3", std::string(500, 's') + tagOf("Old title", '\xC8'));
    CHECK(drive::text(editor.field(L"Title:")) == L"Old title");
    CHECK(drive::text(editor.field(L"Genre:")).empty());
    editor.fill(L"Year:", L"2001");
    editor.click(L"Save");
    std::string expected = tagOf("Old title", '\xC8');
    expected.replace(93, 4, "2001");
    CHECK(editor.content() == std::string(500, 's') + expected);
}

TEST_CASE("changes are not lost, nor made, without the user's word")
{
    const std::string before = std::string(500, 's') + tagOf("Old", 5);
    Editor editor(L"kept.mp3", before);
    editor.fill(L"Title:", L"New");
    {
        const Answer cancel(L"Cancel", kBox, L"save the changes");
        CHECK_FALSE(editor.form->close(CloseReason::user));
    }
    {
        const Answer no(L"No", kBox, L"cannot hold all of these characters");
        editor.fill(L"Title:", L"\u4E16\u754C");
        editor.click(L"Save");
        CHECK(no.came());
    }
    CHECK(editor.content() == before);
    editor.fill(L"Title:", L"New");
    {
        // Another program holds the file.
        const HANDLE held = CreateFileW(editor.path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
        const Answer told(L"OK", kBox, L"could not be saved");
        editor.click(L"Save");
        CHECK(told.came());
        CloseHandle(held);
    }
    {
        const Answer told(L"OK", kBox, L"too short for lyrics");
        editor.fill(L"Lyrics:", L"la");
        editor.click(L"Save");
        CHECK(told.came());
        editor.fill(L"Lyrics:", L"");
    }
    CHECK(editor.content() == before);
    const Answer yes(L"Yes", kBox, L"save the changes");
    CHECK(editor.form->close(CloseReason::user));
    CHECK(editor.content() == std::string(500, 's') + [] {
        std::string tag = tagOf("New", 5);
        tag.replace(3, 30, "New" + std::string(27, ' '));
        return tag;
    }());
}

TEST_CASE("a file that cannot have a tag is said to be one")
{
    Editor editor(L"short.mp3", std::string(100, 's'));
    const Answer told(L"OK", kBox, L"cannot have a tag");
    CHECK_FALSE(EditTag(editor.path));
    CHECK(told.came());
}

#pragma once
// Where the toolbar sends what it hears. The rooms above this one (sounds, IMs and mail) are
// reached only through this table; the program's entry fills it before the toolbar is made. An
// empty entry means that the feature is not there: its button or step is left out.
#include <functional>
#include <string>

namespace velora {

class Menu;

struct ToolbarRoutes {
    /// The name to show and look up for a screen name (the user's aliases).
    std::function<std::wstring(const std::wstring& screenName)> checkForAlias;
    /// One line of the room, while sounds are heard. `own` is set for the user's own lines. It may
    /// not pump messages.
    std::function<void(const std::wstring& screenName, const std::wstring& message, bool own)>
        detectWav;
    /// Keeps a line of the room in the chat log.
    std::function<void(const std::wstring& screenName, const std::wstring& message)> logLine;
    /// Tells the user that a hot word was said. It may not pump messages.
    std::function<void(const std::wstring& word, const std::wstring& screenName,
                       const std::wstring& message)>
        hotWord;
    /// The user is in a room (its window's caption), or has left it.
    std::function<void(const std::wstring& caption)> roomEntered;
    std::function<void()> roomLeft;
    /// Opens the wav list, or brings it to the front (the button cmdWavs).
    std::function<void()> openWavs;
    /// Ends the sound that plays.
    std::function<void()> stopSounds;
    /// While sounds are muted, only what the user plays himself is heard.
    std::function<void(bool mute)> muteSounds;
    std::function<bool()> soundsMuted;
    /// Starts the jukebox.
    std::function<void()> openJukebox;
    /// Turns AOL's instant messages off or on ("Turn IMs Off", "Turn IMs On").
    std::function<void(bool on)> imSwitch;
    /// Opens the IM manager (the button cmdIMs).
    std::function<void()> openIMs;
    /// Takes AOL's IM windows into tabs from now on, or gives them back.
    std::function<void(bool on)> takeIMs;
    /// Opens the auto-answer.
    std::function<void()> autoAnswer;
    /// Opens the list of those whose instant messages are shut out.
    std::function<void()> ignoredNames;
    /// Puts the items of a button's menu into it; a button without one stays away.
    std::function<void(Menu&)> mailMenu, quotesMenu;
    /// Encrypts the mail that is open (the button cmdEncrypt).
    std::function<void()> encryptMail;
    /// Shows the encrypted text of the mail that is read.
    std::function<void()> decryptMail;
    /// Answers the mail that is read with its text quoted; opens the templates of such replies.
    std::function<void()> quoteReply, editTemplates;
    /// Instant messages of this member are taken no notice of from now on.
    std::function<void(const std::wstring& screenName)> ignoreMember;

    std::function<void()> showOptions;
    std::function<void()> checkUpdate;
    /// Writes a note of the user's into the chat log. Called only while rooms are logged.
    std::function<void(const std::wstring& note)> logNote;

    /// Ends the program, after asking the user.
    std::function<void()> exitProgram;
    /// AOL has ended: the program has nothing left to do.
    std::function<void()> aolEnded;

    /// A document of AOL (an MDI child, as a window handle) was made or changed, or is gone.
    std::function<void(void*document)> documentChanged, documentGone;
    /// AOL's frame was moved, sized, activated or hidden.
    std::function<void()> frameMoved;
    /// The tick of tmrIMWatch.
    std::function<void()> watchIMs;
};

/// The program's one table.
ToolbarRoutes& toolbarRoutes();

} // namespace velora

#include "core/modOptionPages.h"

#include "base/text.h"
#include "core/modHotWordList.h"

namespace velora {
namespace {

constexpr long kNoLimit = 0x7FFF;

OptionField check(const wchar_t* caption, const Option<bool>& option, const wchar_t* tip)
{
    return {FieldKind::check, caption, tip, option.id(), {}, 0, 0, {}, {}};
}

OptionField number(const wchar_t* caption, const Option<long>& option, long least, long most,
                   const wchar_t* unit, const wchar_t* tip)
{
    return {FieldKind::number, caption, tip, option.id(), {}, least, most, unit, {}};
}

OptionField text(const wchar_t* caption, const Option<std::wstring>& option, long longest,
                 const wchar_t* tip)
{
    return {FieldKind::text, caption, tip, option.id(), {}, 0, longest, {}, {}};
}

template <class T>
OptionField choice(const wchar_t* caption, const Option<T>& option, const wchar_t* tip,
                   std::vector<FieldChoice> choices)
{
    return {FieldKind::choice, caption, tip, option.id(), {}, 0, 0, {}, std::move(choices)};
}

OptionField colour(const wchar_t* caption, const Option<long>& option, const wchar_t* tip)
{
    return {FieldKind::colour, caption, tip, option.id(), {}, 0, 0, {}, {}};
}

/// The look of a tooltip: its shape and its two colours.
std::vector<OptionField> tipLook(const Option<bool>& balloon, const Option<long>& textColour,
                                 const Option<long>& background, const Option<bool>& shown)
{
    return {
        check(L"As a balloon", balloon, L"The tip has round corners and points at its place")
            .needing(shown),
        colour(L"Colour of its text:", textColour, L"Click to choose another colour")
            .needing(shown),
        colour(L"Its background:", background, L"Click to choose another colour").needing(shown)};
}

std::vector<OptionField> operator+(std::vector<OptionField> fields,
                                   const std::vector<OptionField>& more)
{
    fields.insert(fields.end(), more.begin(), more.end());
    return fields;
}

OptionPage general()
{
    using namespace opt;
    return {L"General",
            L"Velora's own messages, and what you type behind a \"/\".",
            {{L"Messages",
              {check(L"Messages close by themselves", General::AutoCloseMsgBox,
                     L"A message goes away as if you had pressed its marked button"),
               number(L"After:", General::AutoCloseTime, 1, 3600, L"seconds",
                      L"How long a message waits for you, from 1 to 3600 seconds")
                   .needing(General::AutoCloseMsgBox)}},
             {L"Chat keywords",
              {check(L"Carry out keywords that I type in the room", ChatKeywords::Enabled,
                     L"A text with \"/\" in front is done, not sent. Without this you cannot reach "
                     L"this window by \"/options\""),
               check(L"Show the list of keywords when I type \"/\"", ChatKeywords::KeywordPopup,
                     L"The list follows what you type")
                   .needing(ChatKeywords::Enabled)}},
             {L"Names",
              {check(L"Call people by their aliases", General::ChatAliasEnabled,
                     L"The chat log and the sounds of the room know people by the names that you "
                     L"gave them in the Alias Editor")}},
             {L"All settings",
              {{FieldKind::file,
                L"They can be kept in a file, and taken to another machine.",
                L"With aliases, keywords and hot words, without buddy notes and lists of sounds",
                {},
                {},
                0,
                0,
                {},
                {}}}}}};
}

OptionPage chatRoom()
{
    using namespace opt;
    return {
        L"Chat Room",
        L"What is kept of a room, and how long texts go out to it.",
        {{L"Chat log",
          {check(L"Keep a log of chat rooms", General::ChatLog,
                 L"Every line of the room goes into a text file in Velora's folder "
                 L"\"chat logs\""),
           check(L"A file for each day", General::LogChatsByDate, L"Off: one file for each room")
               .needing(General::ChatLog)}},
         {L"Long texts",
          {check(L"Send a long text as several lines", ChatExtender::UseMultiline,
                 L"While the fader is off. Without this AOL cuts what is too long for a line"),
           number(L"Longest line:", ChatExtender::CharsInLine, 10, 1000, L"characters",
                  L"A longer text is broken at a blank, from 10 to 1000 characters"),
           {FieldKind::seconds,
            L"Pause between lines:",
            L"AOL refuses lines that follow too quickly: 1.50 seconds are safe",
            ChatExtender::MultilineBurst.id(),
            {},
            100,
            60000,
            L"seconds",
            {}}}}}};
}

OptionPage hotWordsPage()
{
    using namespace opt;
    return {L"Hot Words",
            L"Velora tells you when somebody says one of these words in the room.",
            {{L"Hot words",
              {check(L"Look for hot words", HotWords::Active,
                     L"A small window in the corner of the screen tells who said what"),
               check(L"Capital letters matter", HotWords::CaseSensitive,
                     L"On: \"Rose\" is not found in \"rose\"")
                   .needing(HotWords::Active),
               {FieldKind::words,
                L"Your words:",
                L"They are found in the middle of a word, too",
                {},
                {},
                0,
                0,
                {},
                {}}}}}};
}

OptionPage fader()
{
    using namespace opt;
    return {
        L"Fader",
        L"When texts go out in colours. Colours and schemes are in the Fade Panel.",
        {{L"Fading",
          {check(L"Fade what I send", Fader::On, L"Text typed in the chat room goes out faded"),
           check(L"Only sounds from the Wav List", Fader::FadeWavOnly,
                 L"Typed text goes out plain; sound lines go out faded"),
           check(L"Solid: one colour after another", Fader::SolidFade,
                 L"Every letter takes the next colour, without shades in between"),
           check(L"Show the Fade Panel with a chat room", Fader::ShowFadePanelWithChat,
                 L"While the fader is on, the panel comes and goes with the room")}},
         {L"After each use",
          {check(L"Take a new fade", Fader::NewFadeAfterUse, L"The next line gets another fade"),
           check(L"Draw it at random", Fader::DoRandomFade, L"Off: the fade stays as it is")
               .needing(Fader::NewFadeAfterUse)}},
         {L"What is drawn at random",
          {check(L"New colours", Fader::UseRandomColors,
                 L"On: new colours are drawn. Off: one of the saved schemes is taken")
               .needing(Fader::DoRandomFade),
           check(L"How many colours", Fader::RandomizeFadeNumber, L"2 to 10 colours, as it happens")
               .needing(Fader::DoRandomFade),
           check(L"Bold", Fader::UseRandomBold, L"Bold comes out on half of the time")
               .needing(Fader::DoRandomFade),
           check(L"Italic", Fader::UseRandomItalic, L"Italic comes out on half of the time")
               .needing(Fader::DoRandomFade),
           check(L"Underline", Fader::UseRandomULine, L"Underline comes out on half of the time")
               .needing(Fader::DoRandomFade),
           check(L"Wavy", Fader::UseRandomWavy, L"Wavy comes out on half of the time")
               .needing(Fader::DoRandomFade)},
          2},
         {L"Schemes",
          std::vector{check(L"Tell about a scheme in a tooltip", Fader::ShowTagToolTips,
                            L"Author, dates and comments, over the list of schemes in the Fade "
                            L"Panel. Taken up when a scheme is chosen")}
              + tipLook(Fader::FadeTipBalloon, Fader::FadeTipTextColor, Fader::FadeTipBackColor,
                        Fader::ShowTagToolTips)}}};
}

OptionPage toolbar()
{
    using namespace opt;
    return {L"Toolbar",
            L"The panel over AOL's window. A right click on it chooses its buttons.",
            {{L"Toolbar",
              {check(L"Show the toolbar", Toolbar::ShowToolbar,
                     L"Without it, Velora's icon in the notification area holds the menus"),
               choice(L"Direction:", Toolbar::Horizontal, L"How its buttons stand",
                      {{L"Lying", L"True"}, {L"Upright", L"False"}})
                   .needing(Toolbar::ShowToolbar),
               check(L"Begin with the toolbar", General::ShowToolbar,
                     L"Off: whenever Velora starts the toolbar is hidden")}},
             {L"Menus",
              {choice(L"Velora's menus:", Toolbar::MenuAccess,
                      L"The icon also comes up while the toolbar is hidden",
                      {{L"On the toolbar", L"Toolbar"},
                       {L"On the toolbar and in the notification area", L"Tray"}})}}}};
}

OptionPage wavList()
{
    using namespace opt;
    return {
        L"Wav List",
        L"The list of your sounds.",
        {{L"List",
          {choice(L"A double click:", WavList::DoubleClick, L"So does Enter",
                  {{L"Previews the sound", L"Preview"}, {L"Sends the sound", L"Send"}}),
           check(L"Names in upper and lower case", WavList::PreserveCase,
                 L"Off: all names are written in small letters"),
           check(L"Hide AOL's own sounds", WavList::NoAOLWavs,
                 L"The sounds that come with AOL are left out of the list"),
           check(L"Send {S in upper case", WavList::UseUpperWavTrigger,
                 L"Off: {s is sent; both are understood")}},
         {L"Progress of a sound",
          std::vector{check(L"Show how far a sound has played", WavList::ShowProgress,
                            L"A bar at the foot of the list"),
                      check(L"Also in a tip over the bar", WavList::ShowProgressTooltip,
                            L"The name of the sound and its percentage, while the mouse is there")
                          .needing(WavList::ShowProgress)}
              + tipLook(WavList::ProgressTooltipBalloon, WavList::WpTipTextColor,
                        WavList::WpTipBackColor, WavList::ShowProgressTooltip)}}};
}

OptionPage sounds()
{
    using namespace opt;
    return {L"Sounds",
            L"The sounds that other members send.",
            {{L"Sounds of others",
              {check(L"Play sounds that are said in the room", General::WavDetect,
                     L"The same as /hushkit in the room"),
               check(L"Play sounds that instant messages name", IM::IMWavsEnabled,
                     L"A message that is nothing but {S and a name plays that sound"),
               number(L"At most:", WavScan::MaxPerMinute, 0, 1000, L"sounds a minute",
                      L"What is said beyond that is not played, from 0 to 1000")}},
             {L"Wav check",
              {check(L"Check the sounds of the room", WavScan::Active,
                     L"Each sound that is said is looked for in your lists"),
               check(L"Notify of unknown sounds", WavScan::Notify,
                     L"WavCheck comes up when you do not have a sound")
                   .needing(WavScan::Active),
               check(L"Show properties", WavScan::ShowProperties,
                     L"WavCheck shows the file and the size of a sound that it finds"),
               check(L"No messages", WavScan::NoPrompt,
                     L"No box comes up when you look for a sound that you do not have")}}}};
}

std::vector<FieldChoice> descriptionChoices(bool none)
{
    std::vector<FieldChoice> choices;
    if (none)
        choices.push_back({L"(none)", L""});
    for (const wchar_t* name :
         {L"Title", L"Artist", L"Album", L"Year", L"Comments", L"Genre", L"Compression"})
        choices.push_back({name, name});
    return choices;
}

OptionPage descriptions()
{
    using namespace opt::Descriptions;
    return {L"Descriptions",
            L"What is known of your sounds, shown in the Wav List and sent behind a sound.",
            {{L"In the Wav List",
              std::vector{
                  check(L"Show descriptions", Show, L"They come from the database of descriptions"),
                  choice(L"Where:", ShowAs, L"Where the Wav List shows them",
                         {{L"In a tooltip", L"ToolTip"},
                          {L"In columns", L"Columns"},
                          {L"In a line below", L"Line"}})
                      .needing(Show)}
                  + tipLook(UseBalloon, Textcolor, Backcolor, Show)},
             {L"Fields that are shown",
              {check(L"Title", IncludeTitle, L"Also in WavCheck"),
               check(L"Artist", IncludeArtist, L"Also in WavCheck"),
               check(L"Album", IncludeAlbum, L"Also in WavCheck"),
               check(L"Year", IncludeYear, L"Also in WavCheck"),
               check(L"Comments", IncludeComments, L"Also in WavCheck"),
               check(L"Genre", IncludeGenre, L"Also in WavCheck"),
               check(L"Compression", IncludeCompression, L"How the sound is packed")},
              4},
             {L"Sending",
              {check(L"Send the description to the room", SendToRoom,
                     L"A line with the description follows the sound"),
               choice(L"First field:", DescripField1, L"What the line begins with",
                      descriptionChoices(false))
                   .needing(SendToRoom),
               choice(L"Second field:", DescripField2, L"What follows it", descriptionChoices(true))
                   .needing(SendToRoom),
               check(L"Without the word \"Descrip:\"", TrimDescrip,
                     L"The line is nothing but the description")
                   .needing(SendToRoom)}}}};
}

OptionPage instantMessages()
{
    using namespace opt::IM;
    return {
        L"Instant Messages",
        L"The window that gathers AOL's instant messages.",
        {{L"Window",
          {check(L"Gather instant messages in one window", TabsOn,
                 L"Off: AOL's windows stay where AOL puts them"),
           choice(L"Show them as:", Style, L"How you go from one to the other",
                  {{L"Tabs", L"tabs"}, {L"Buttons", L"buttons"}, {L"A list", L"list"}}),
           choice(L"Tabs and buttons:", Position, L"Where tabs and buttons stand",
                  {{L"At the top", L"top"}, {L"At the bottom", L"bottom"}}),
           check(L"Several rows of tabs", MultipleRows, L"Off: two arrows move through the tabs"),
           check(L"Extra buttons", TabExtraBtns, L"Ignore, Notes, Copy and Log"),
           check(L"Above AOL", DisplayOnTopOfAOL,
                 L"The window stays above AOL while you work in AOL")}},
         {L"Keys",
          {check(L"Enter sends", EnterSends, L"Off: Enter begins a new line"),
           check(L"Tab goes to the next message", TabSwitches, L"Ctrl+Tab does so in any case")},
          2},
         {L"Keeping and closing",
          {check(L"Keep logs", LogIMs, L"In Velora's folder \"im logs\""),
           check(L"Sort them by day", LogIMsByDate,
                 L"On: a folder for each day. Off: a folder for each member")
               .needing(LogIMs),
           check(L"Close them when Velora ends", CloseIMsOnExit, L"Off: they go back to AOL"),
           check(L"Accept messages from the internet", AutoAcceptAIM,
                 L"Off: you are asked before each first one")},
          2},
         {L"Buddy notes",
          std::vector{check(L"Show the note about a member", DisplayNotes,
                            L"The note comes up as a tip when you choose the member's tab")}
              + tipLook(BuddyTipBalloon, BuddyTipTextColor, BuddyTipBackColor, DisplayNotes)}}};
}

OptionPage alerts()
{
    using namespace opt::IM;
    return {
        L"Alerts",
        L"How Velora tells you of an instant message while you are elsewhere.",
        {{L"Alert window",
          {check(L"Show an alert for a new message", DisplayAlert,
                 L"Not for the message that you are looking at, nor while you work in AOL"),
           check(L"Also while AOL is minimised", AlertIfMin,
                 L"Off: a minimised AOL is left in peace")
               .needing(DisplayAlert),
           check(L"Not while another program fills the screen", QuietFullScreen,
                 L"Games, films and presentations are not disturbed")
               .needing(DisplayAlert),
           check(L"Show what was said", DisplayMessage,
                 L"Off: only the name, for eyes that should not read along")
               .needing(DisplayAlert),
           number(L"It stays for:", AlertSeconds, 1, 3600, L"seconds", L"From 1 to 3600 seconds")
               .needing(DisplayAlert),
           choice(L"Corner:", AlertPos, L"Where on the screen it comes up",
                  {{L"Bottom right", L"0"},
                   {L"Bottom left", L"1"},
                   {L"Top right", L"2"},
                   {L"Top left", L"3"}})
               .needing(DisplayAlert),
           check(L"Flash a few times", AlertFlash, L"Four times; then it stays as it is")
               .needing(DisplayAlert),
           colour(L"Flash colour:", FlashColor, L"Click to choose another colour")
               .needing(AlertFlash)}},
         {L"Sound",
          {check(L"Play a sound with the alert", PlayAlertWav, L"At most every three seconds")
               .needing(DisplayAlert),
           OptionField{FieldKind::sound,
                       L"Sound:",
                       L"A file, or the name of a sound in your lists",
                       AlertWav.id(),
                       {},
                       0,
                       kNoLimit,
                       {},
                       {}}
               .needing(PlayAlertWav)}},
         {L"Words that matter",
          {check(L"Show a message when one holds this text", TextAlert,
                 L"Whatever you are doing; capital letters do not matter"),
           text(L"Text:", AlertText, 200, L"What the message has to hold").needing(TextAlert)}}}};
}

OptionPage autoAnswer()
{
    using namespace opt::IM;
    return {
        L"Auto-Answer",
        L"Whom Velora answers for you. The messages are in the Auto-Answer window.",
        {{L"Answering",
          {choice(L"Answer:", IMAnswerMode, L"Switching on forgets who has been answered before",
                  {{L"Nobody (off)", L"0"},
                   {L"Everybody", L"1"},
                   {L"Only the names in the exceptions list", L"2"},
                   {L"Everybody but the names in the exceptions list", L"3"},
                   {L"Only members with a buddy note", L"4"},
                   {L"Everybody but members with a buddy note", L"5"}}),
           check(L"Answer only the first message of each member", AnswerOnce,
                 L"Off: every message is answered, up to the limit below"),
           number(L"At most:", MaxAnswersPerHour, 1, 1000, L"answers to a member in an hour",
                  L"So that two programs do not answer each other for ever, from 1 to 1000")}},
         {L"Messages",
          {check(L"Prefer a sender's personalized message", UsePersonalMessages,
                 L"Off: everybody gets the general message"),
           check(L"Fill in the sender's alias instead of the screen name", UseAlias,
                 L"Where the message says who is answered"),
           check(L"Show the answer window", ShowAnswerWin,
                 L"A small list of the messages that were answered")}}}};
}

OptionPage mail()
{
    using namespace opt::EMail;
    return {L"Mail",
            L"Velora's buttons on AOL's mail windows, and encrypted mail.",
            {{L"Mail windows",
              {check(L"Buttons on mail windows", opt::Toolbar::MailBar,
                     L"In the title bar of the mail or board window that is in front"),
               check(L"One that adds a line about Velora", AdInMail,
                     L"The line goes to the end of the mail that you write, only when you press it")
                   .needing(opt::Toolbar::MailBar)}},
             {L"Encryption",
              {check(L"Hide passwords while I type them", MaskPassword,
                     L"The box that asks for a password can show it all the same"),
               check(L"Tell how to decrypt", IncludeDecryptInstructions,
                     L"An encrypted mail says with what it can be decrypted")}}}};
}

OptionPage replies()
{
    using namespace opt::Templates;
    return {
        L"Replies",
        L"How replies quote. The texts above a quote are in the Template Editor.",
        {{L"Replies to mail",
          {check(L"Quote in mail replies", MailQuoteEnabled,
                 L"A reply opens with the template and the quote"),
           check(L"Quote the whole mail", MailIncludeReply, L"Off: only what is selected in it")
               .needing(MailQuoteEnabled),
           check(L"Indent the quote of a mail", MailUseQuoteStyle,
                 L"The quote stands to the right, apart from what you write")
               .needing(MailQuoteEnabled),
           check(L"Join its lines", MailStripReturns, L"The quote becomes one paragraph")
               .needing(MailQuoteEnabled)}},
         {L"Replies on message boards",
          {check(L"Quote on message boards", BoardQuoteEnabled,
                 L"A reply opens with the template and the quote"),
           check(L"Quote the whole message", BoardIncludeReply, L"Off: only what is selected in it")
               .needing(BoardQuoteEnabled),
           check(L"With its head lines", BoardIncludeReplyMB,
                 L"Subject, date and author of the message as well")
               .needing(BoardIncludeReply),
           check(L"Indent the quote of a message", BoardUseQuoteStyle,
                 L"The quote stands to the right, apart from what you write")
               .needing(BoardQuoteEnabled),
           check(L"Join the message's lines", BoardStripReturn, L"The quote becomes one paragraph")
               .needing(BoardQuoteEnabled)}},
         {L"Names",
          {check(L"Call senders by their alias", UseQuoteAliases,
                 L"Where the template names the sender")}}}};
}

bool letter(wchar_t c)
{
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}

/// Gives a caption the first letter that is free for its mnemonic, the first letters of words
/// before others.
void giveMnemonic(std::wstring& caption, std::wstring& taken)
{
    for (const bool beginnings : {true, false})
        for (std::size_t i = 0; i < caption.size(); ++i) {
            const wchar_t c = static_cast<wchar_t>(upper(caption.substr(i, 1))[0]);
            if (!letter(caption[i]) || taken.find(c) != taken.npos
                || (beginnings && i > 0 && letter(caption[i - 1])))
                continue;
            taken += c;
            caption.insert(i, 1, L'&');
            return;
        }
}

std::vector<OptionPage> withMnemonics(std::vector<OptionPage> pages)
{
    for (OptionPage& page : pages) {
        std::wstring taken(kWindowKeys);
        for (const OptionGroup& group : page.groups)
            for (const OptionField& field : group.fields)
                taken += keysOf(field.kind);
        for (OptionGroup& group : page.groups)
            for (OptionField& field : group.fields)
                if (field.kind != FieldKind::file)
                    giveMnemonic(field.caption, taken);
    }
    return pages;
}

} // namespace

const std::vector<OptionPage>& optionPages()
{
    static const std::vector<OptionPage> pages = withMnemonics(
        {general(), chatRoom(), hotWordsPage(), fader(), toolbar(), wavList(), sounds(),
         descriptions(), instantMessages(), alerts(), autoAnswer(), mail(), replies()});
    return pages;
}

std::wstring_view keysOf(FieldKind kind)
{
    return kind == FieldKind::words ? kWordsKeys : kind == FieldKind::file ? kFileKeys : L"";
}

} // namespace velora

#include "chat/modQuotesMenu_win.h"

#include "base/text.h"
#include "chat/frmTemplates.h"
#include "chat/modTemplates.h"
#include "settings/Options.h"
#include "ui/Menu.h"

namespace velora {
namespace {

/// A checked item that turns an option over.
void addSwitch(Menu& menu, const wchar_t* text, Option<bool> option, bool enabled = true)
{
    const bool on = option.get();
    menu.item(text, [option, on] { option.set(!on); }, {.enabled = enabled, .checked = on});
}

} // namespace

void LoadQuotesMenu(Menu& mnuQuoteItem)
{
    using namespace opt::Templates;
    const TemplateSet set = TemplateSet::load();
    for (int number = 1; number <= static_cast<int>(kTemplates); ++number) {
        const QuoteTemplate& quote = set.templates[static_cast<std::size_t>(number - 1)];
        const std::wstring caption = L"&" + std::to_wstring(number) + L"  "
                                     + replaceAll(templateCaption(quote, number), L"&", L"&&");
        mnuQuoteItem.item(caption, [number] { Default.set(number); },
                          {.checked = number == set.chosen, .radio = true});
    }
    mnuQuoteItem.separator();
    mnuQuoteItem.item(L"&Edit Templates...", [] { frmTemplates::showWindow(); });
    mnuQuoteItem.separator();

    const bool mail = MailQuoteEnabled.get(), board = BoardQuoteEnabled.get();
    addSwitch(mnuQuoteItem, L"Quote in &Mail Replies", MailQuoteEnabled);
    Menu& mnuMail = mnuQuoteItem.submenu(L"Mail &Quotes", mail);
    addSwitch(mnuMail, L"&Include the Message", MailIncludeReply);
    addSwitch(mnuMail, L"In&dent the Quote", MailUseQuoteStyle);
    addSwitch(mnuMail, L"&Join Its Lines", MailStripReturns);
    addSwitch(mnuQuoteItem, L"Quote on Message &Boards", BoardQuoteEnabled);
    Menu& mnuBoard = mnuQuoteItem.submenu(L"B&oard Quotes", board);
    addSwitch(mnuBoard, L"&Include the Message", BoardIncludeReply);
    addSwitch(mnuBoard, L"With Its &Head Lines", BoardIncludeReplyMB, BoardIncludeReply.get());
    addSwitch(mnuBoard, L"In&dent the Quote", BoardUseQuoteStyle);
    addSwitch(mnuBoard, L"&Join Its Lines", BoardStripReturn);
    mnuQuoteItem.separator();
    addSwitch(mnuQuoteItem, L"Call Senders by Their &Alias", UseQuoteAliases);
}

} // namespace velora

#pragma once

namespace velora {

class Menu;

/// Puts the items of the toolbar's quotes menu into it: the templates with a dot at the default,
/// their editor, and the switches of quoting.
void LoadQuotesMenu(Menu& mnuQuoteItem);

} // namespace velora

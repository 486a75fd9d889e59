#pragma once
// The reply templates and the options of quoting, as the settings keep them.
#include "chat/modQuote.h"

namespace velora {

inline constexpr std::size_t kTemplates = 3;

/// Writes the mail and board reply templates that come with the program into "Templates\1" to
/// "Templates\3"; what the user has there stays. Throws Error when the settings refuse.
void MakeDefaultTemplates();

/// Template `number` (1 to 3). What is missing in the settings is the built-in one's.
QuoteTemplate loadTemplate(int number);
/// Throws Error when the settings refuse.
void saveTemplate(int number, const QuoteTemplate& value);
/// The number of the template that replies take; a setting that is none counts as 1.
int defaultTemplate();

/// What the template editor works on; compared with what it began with to see changes.
struct TemplateSet {
    std::array<QuoteTemplate, kTemplates> templates;
    int chosen = 1; ///< the default
    static TemplateSet load();
    /// Writes what differs from `before`. Throws Error when the settings refuse.
    void save(const TemplateSet& before) const;
    bool operator==(const TemplateSet&) const = default;
};

/// A template's name for lists and menus: one line of at most 60 characters, never empty.
std::wstring templateCaption(const QuoteTemplate& value, int number);

/// A reply as it begins with this template, made of sample values, as HTML.
std::wstring sampleReply(std::wstring_view charHtml);

/// What the options say for replies to a mail, or to a board's message.
struct QuoteRules {
    bool enabled = true;
    bool includeMessage = true; ///< quote the message, not only its selection
    bool includeHead = false;   ///< with the head of a board's message
    bool quoteStyle = true;
    bool stripReturns = false;
    bool aliases = true; ///< the sender is called by the user's alias
};
QuoteRules quoteRules(bool board);

} // namespace velora

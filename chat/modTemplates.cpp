#include "chat/modTemplates.h"

#include "base/text.h"
#include "settings/Options.h"

#include <algorithm>

namespace velora {
namespace {

constexpr wchar_t kHeader[] = L"Header", kCharHtml[] = L"Char HTML";

constexpr int kLast = static_cast<int>(kTemplates);
constexpr std::size_t kLongestCaption = 60;

std::wstring sectionOf(int number)
{
    return L"Templates\\" + std::to_wstring(number);
}

} // namespace

void MakeDefaultTemplates()
{
    for (int number = 1; number <= kLast; ++number)
        if (settingValues(sectionOf(number)).empty())
            saveTemplate(number, builtInTemplates()[static_cast<std::size_t>(number - 1)]);
}

QuoteTemplate loadTemplate(int number)
{
    number = std::clamp(number, 1, kLast);
    const QuoteTemplate& preset = builtInTemplates()[static_cast<std::size_t>(number - 1)];
    return {readSetting(sectionOf(number), kHeader, preset.Header),
            readSetting(sectionOf(number), kCharHtml, preset.CharHtml)};
}

void saveTemplate(int number, const QuoteTemplate& value)
{
    writeSetting(sectionOf(number), kHeader, value.Header);
    writeSetting(sectionOf(number), kCharHtml, value.CharHtml);
}

int defaultTemplate()
{
    const long number = opt::Templates::Default.get();
    return number >= 1 && number <= kLast ? static_cast<int>(number) : 1;
}

TemplateSet TemplateSet::load()
{
    TemplateSet set;
    for (int number = 1; number <= kLast; ++number)
        set.templates[static_cast<std::size_t>(number - 1)] = loadTemplate(number);
    set.chosen = defaultTemplate();
    return set;
}

void TemplateSet::save(const TemplateSet& before) const
{
    for (std::size_t i = 0; i < kTemplates; ++i)
        if (templates[i] != before.templates[i])
            saveTemplate(static_cast<int>(i) + 1, templates[i]);
    if (chosen != before.chosen)
        opt::Templates::Default.set(chosen);
}

std::wstring templateCaption(const QuoteTemplate& value, int number)
{
    std::wstring caption = value.Header;
    for (wchar_t& c : caption)
        if (c < L' ')
            c = L' ';
    caption = trim(caption);
    if (caption.empty())
        return L"Template " + std::to_wstring(number);
    return caption.size() > kLongestCaption ? caption.substr(0, kLongestCaption) + L"..." : caption;
}

std::wstring sampleReply(std::wstring_view charHtml)
{
    const QuoteRules rules = quoteRules(false);
    return FormatQuote(FillVariables(charHtml, {L"Joe Smith", L"1/2/2003", L"4:05 PM"}),
                       L"Shall we meet for lunch tomorrow?",
                       {.quoteStyle = rules.quoteStyle, .stripReturns = rules.stripReturns});
}

QuoteRules quoteRules(bool board)
{
    using namespace opt::Templates;
    if (board)
        return {BoardQuoteEnabled.get(),  BoardIncludeReply.get(), BoardIncludeReplyMB.get(),
                BoardUseQuoteStyle.get(), BoardStripReturn.get(),  UseQuoteAliases.get()};
    return {MailQuoteEnabled.get(),  MailIncludeReply.get(), false,
            MailUseQuoteStyle.get(), MailStripReturns.get(), UseQuoteAliases.get()};
}

} // namespace velora

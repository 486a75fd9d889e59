#include "chat/modTemplates.h"

#include "settings/Options.h"

#include <algorithm>

namespace velora {
namespace {

constexpr wchar_t kHeader[] = L"Header", kCharHtml[] = L"Char HTML";

std::wstring sectionOf(int number)
{
    return L"Templates\\" + std::to_wstring(number);
}

} // namespace

void MakeDefaultTemplates()
{
    for (int number = 1; number <= kTemplates; ++number)
        if (settingValues(sectionOf(number)).empty())
            saveTemplate(number, builtInTemplates()[static_cast<std::size_t>(number - 1)]);
}

QuoteTemplate loadTemplate(int number)
{
    number = std::clamp(number, 1, kTemplates);
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
    return number >= 1 && number <= kTemplates ? static_cast<int>(number) : 1;
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

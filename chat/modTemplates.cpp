#include "chat/modTemplates.h"

#include "chat/modQuote.h"
#include "settings/Options.h"

namespace velora {

void MakeDefaultTemplates()
{
    int number = 0;
    for (const QuoteTemplate& preset : builtInTemplates()) {
        const std::wstring section = L"Templates\\" + std::to_wstring(++number);
        if (!settingValues(section).empty())
            continue;
        writeSetting(section, L"Header", preset.Header);
        writeSetting(section, L"Char HTML", preset.CharHtml);
    }
}

} // namespace velora

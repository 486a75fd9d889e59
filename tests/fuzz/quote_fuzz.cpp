// Quoting: values from a mail never bring markup, and no text is lost but tags.
#include "base/text.h"
#include "chat/modQuote.h"
#include "fuzz/fuzz.h"

#include <algorithm>
#include <cstdlib>

using namespace velora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::wstring text = from1252(fuzz::bytesOf(data + 1, size - 1));
    const QuoteVariables values{GetScreenNameFromMail(text), GetDateFromMail(text), text};
    for (const QuoteTemplate& quote : builtInTemplates()) {
        const std::wstring filled = FillVariables(quote.CharHtml, values);
        if (std::count(filled.begin(), filled.end(), L'<')
            != std::count(quote.CharHtml.begin(), quote.CharHtml.end(), L'<'))
            std::abort();
    }
    const QuoteStyle style{(data[0] & 1) != 0, (data[0] & 2) != 0, data[0] & 4 ? 7 : 6};
    const std::wstring quote = FormatQuote(L"separator", text, style);
    if (!quote.starts_with(L"separator<br>") || !quote.ends_with(L"<br></b></i></u><br><br>"))
        std::abort();
    const ReplyAndSignature parts = GetReplyAndSig(text);
    if (parts.reply.size() + parts.signature.size() > text.size())
        std::abort();
    return 0;
}

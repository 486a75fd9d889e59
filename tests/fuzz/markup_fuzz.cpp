// The markup of messages: whatever it holds, placing it ends, loses no character and stays on the
// surface; a literal value comes out as it went in.
#include "base/text.h"
#include "core/modMarkup.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace velora;

void demand(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

int measure(std::wstring_view text, const MarkupStyle& style)
{
    return static_cast<int>(text.size()) * (style.bold ? 7 : 6);
}

std::wstring withoutBlanks(std::wstring_view text)
{
    return without(without(text, L' '), L'\r');
}

void checkPlan(const std::vector<MarkupRun>& runs, int width)
{
    const MarkupSurface surface{51, width, 40, 13};
    const MarkupPlan plan = planMarkup(runs, surface, measure);
    std::wstring given, placed;
    for (const MarkupRun& run : runs)
        given += run.text;
    int x = 0, y = 0;
    for (const MarkupWord& word : plan.words) {
        demand(word.x >= 51 && word.y >= 0, "a word lies outside");
        demand(word.y > y || (word.y == y && word.x >= x), "words overlap");
        demand(word.y + 13 <= plan.height, "the surface did not grow");
        demand(word.x + word.width <= std::max(width, 51 + 2 * 7), "a word passes the right edge");
        demand(word.text.find(L'\n') == std::wstring::npos, "a line end was placed");
        placed += word.text;
        y = word.y;
        x = word.x + word.width;
    }
    demand(withoutBlanks(given) == withoutBlanks(placed), "characters were lost");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return 0;
    const int width = data[0] * 3;
    const std::string bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    const std::wstring text = from1252(bytes);
    checkPlan(parseMarkup(text), width);

    std::wstring value;
    for (wchar_t c : text)
        value += c < L' ' || c == 0x7F ? L' ' : c;
    demand(plainText(literal(text)) == value, "a literal value changed");
    const auto runs = parseMarkup(literal(text) + L"~B" + literal(text));
    demand(text.empty() || runs.size() == 2, "a literal value acted as markup");
    return 0;
}

#include "im_mail/modAnswerLook.h"

#include "base/text.h"

namespace velora {
namespace {

/// The tag's name in upper case, with its "/"; empty when "<...>" is no tag.
std::wstring tagName(std::wstring_view inside)
{
    std::size_t end = 0;
    while (end < inside.size() && inside[end] != L' ' && inside[end] != L'\t')
        ++end;
    const std::wstring name = upper(inside.substr(0, end));
    const std::size_t first = name.starts_with(L'/') ? 1 : 0;
    if (name.size() <= first || name[first] < L'A' || name[first] > L'Z')
        return {};
    return name;
}

struct Entity {
    std::wstring_view written, sign;
};
constexpr Entity kEntities[] = {
    {L"&lt;", L"<"}, {L"&gt;", L">"}, {L"&quot;", L"\""}, {L"&nbsp;", L" "}, {L"&amp;", L"&"}};

} // namespace

std::vector<LookRun> answerLook(std::wstring_view html)
{
    std::vector<LookRun> runs;
    LookRun style;
    const auto put = [&](std::wstring_view text) {
        LookRun run = style;
        if (!runs.empty()) {
            run.text = runs.back().text;
            if (run == runs.back()) {
                runs.back().text += text;
                return;
            }
        }
        run.text = text;
        runs.push_back(std::move(run));
    };
    for (std::size_t at = 0; at < html.size();) {
        const std::wstring_view rest = html.substr(at);
        if (rest[0] == L'<') {
            const std::size_t end = rest.find(L'>');
            const std::wstring name =
                end == rest.npos ? std::wstring() : tagName(rest.substr(1, end - 1));
            if (!name.empty()) {
                const bool on = name[0] != L'/';
                const std::wstring_view tag = std::wstring_view(name).substr(on ? 0 : 1);
                if (tag == L"B")
                    style.bold = on;
                else if (tag == L"I")
                    style.italic = on;
                else if (tag == L"U")
                    style.underline = on;
                else if (tag == L"A")
                    style.link = on;
                else if (on && (tag == L"BR" || tag == L"P"))
                    put(L"\r\n");
                at += end + 1;
                continue;
            }
        }
        const Entity* found = nullptr;
        if (rest[0] == L'&')
            for (const Entity& entity : kEntities)
                if (startsWithNoCase(rest, entity.written))
                    found = &entity;
        put(found ? found->sign : rest.substr(0, 1));
        at += found ? found->written.size() : 1;
    }
    return runs;
}

std::wstring hyperlink(std::wstring_view address, std::wstring_view text)
{
    std::wstring target = trim(address);
    std::erase_if(target, [](wchar_t c) {
        return static_cast<unsigned>(c) < 0x20 || c == L'"' || c == L'<' || c == L'>';
    });
    if (target.empty())
        return {};
    const bool quoted = target.find(L' ') != target.npos;
    const std::wstring quote = quoted ? L"\"" : L"";
    return L"<a href=" + quote + target + quote + L">"
           + (text.empty() ? target : std::wstring(text)) + L"</a>";
}

} // namespace velora

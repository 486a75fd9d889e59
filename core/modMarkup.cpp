#include "core/modMarkup.h"

#include "base/text.h"

#include <algorithm>
#include <optional>

namespace velora {
namespace {

// Stands for a "~" that is text: no character of any script, so no text of the user's holds it.
constexpr wchar_t kLiteralTilde = 0xFDD0;

bool isLetter(wchar_t c)
{
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}

std::optional<MarkupColour> colourOf(wchar_t letter)
{
    switch (letter) {
    case L'r': return kMarkupRed;
    case L'g': return kMarkupGreen;
    case L'b': return kMarkupBlue;
    case L'y': return kMarkupYellow;
    case L'n': return kMarkupNormal;
    default: return std::nullopt;
    }
}

class Reader {
public:
    std::vector<MarkupRun> read(std::wstring_view markup)
    {
        for (std::size_t at = 0; at < markup.size();)
            at += step(markup.substr(at));
        flush();
        if (newLine_)
            runs_.push_back({style_, {}, true});
        return std::move(runs_);
    }

private:
    // Takes one marker, line end or character from the front; answers its length.
    std::size_t step(std::wstring_view rest)
    {
        const wchar_t next = rest.size() > 1 ? rest[1] : L'\0';
        switch (rest[0]) {
        case L'~': return marker(rest, next);
        case L'\r': newLine(); return next == L'\n' ? 2 : 1;
        case L'\n': newLine(); return 1;
        case kLiteralTilde: text_ += L'~'; return 1;
        default: text_ += rest[0]; return 1;
        }
    }

    std::size_t marker(std::wstring_view rest, wchar_t code)
    {
        switch (lowerChar(code)) {
        case L'b': toggle(&MarkupStyle::bold); return 2;
        case L'i': toggle(&MarkupStyle::italic); return 2;
        case L'u': toggle(&MarkupStyle::underline); return 2;
        case L'n': newLine(); return 2;
        case L'c': return colour(rest);
        default: text_ += L'~'; return 1;
        }
    }

    std::size_t colour(std::wstring_view rest)
    {
        if (rest.size() < 3 || !isLetter(rest[2]))
            return 2;
        if (const auto chosen = colourOf(lowerChar(rest[2]))) {
            flush();
            style_.colour = *chosen;
        }
        return 3;
    }

    void toggle(bool MarkupStyle::*which)
    {
        flush();
        style_.*which = !(style_.*which);
    }

    void newLine()
    {
        flush();
        if (newLine_)
            runs_.push_back({style_, {}, true});
        newLine_ = true;
    }

    void flush()
    {
        if (text_.empty())
            return;
        runs_.push_back({style_, std::move(text_), newLine_});
        text_.clear();
        newLine_ = false;
    }

    std::vector<MarkupRun> runs_;
    MarkupStyle style_;
    std::wstring text_;
    bool newLine_ = false; // the next run begins a line
};

// A word: what stands between blanks, with the blank before it. Its pieces may differ in style.
struct Piece {
    const MarkupStyle* style;
    std::wstring_view text;
};

class Planner {
public:
    Planner(const MarkupSurface& surface, const MeasureText& measure)
        : surface_(surface), measure_(measure), x_(surface.leftMargin)
    {
        plan_.height = surface.height;
        plan_.right = surface.leftMargin;
        plan_.lines = 1;
        growTo(surface.lineHeight);
    }

    MarkupPlan plan(const std::vector<MarkupRun>& runs)
    {
        for (const MarkupRun& run : runs) {
            if (run.newLine) {
                placeWord();
                nextLine();
            }
            addText(run);
        }
        placeWord();
        return std::move(plan_);
    }

private:
    void addText(const MarkupRun& run)
    {
        const std::wstring_view text = run.text;
        std::size_t from = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] != L' ')
                continue;
            addPiece(run.style, text.substr(from, i - from));
            placeWord();
            from = i;
        }
        addPiece(run.style, text.substr(from));
    }

    void addPiece(const MarkupStyle& style, std::wstring_view text)
    {
        if (!text.empty())
            word_.push_back({&style, text});
    }

    void placeWord()
    {
        if (word_.empty())
            return;
        int width = 0;
        for (const Piece& piece : word_)
            width += measure_(piece.text, *piece.style);
        if (!atLineStart_ && x_ + width > surface_.width)
            nextLine();
        if (atLineStart_ && word_.front().text.front() == L' ')
            word_.front().text.remove_prefix(1);
        for (const Piece& piece : word_)
            placePiece(*piece.style, piece.text);
        word_.clear();
    }

    // What is longer than a line goes on in the next ones; each takes at least a character.
    void placePiece(const MarkupStyle& style, std::wstring_view text)
    {
        // No line holds more; measuring all the rest for each line would take ages with a long one.
        constexpr std::size_t kMostOfALine = 2000;
        while (!text.empty()) {
            std::size_t count = std::min(text.size(), kMostOfALine);
            int width = measure_(text.substr(0, count), style);
            if (x_ + width > surface_.width) {
                count = fitting(style, text.substr(0, count));
                if (count == 0 && !atLineStart_) {
                    nextLine();
                    continue;
                }
                count = wholeCharacters(text, std::max<std::size_t>(count, 1));
                width = measure_(text.substr(0, count), style);
            }
            put(style, text.substr(0, count), width);
            text.remove_prefix(count);
            if (!text.empty())
                nextLine();
        }
    }

    std::size_t fitting(const MarkupStyle& style, std::wstring_view text) const
    {
        std::size_t fits = 0, tooMany = text.size();
        while (fits + 1 < tooMany) {
            const std::size_t middle = (fits + tooMany) / 2;
            (x_ + measure_(text.substr(0, middle), style) > surface_.width ? tooMany : fits) =
                middle;
        }
        return fits;
    }

    // A cut never falls between the halves of a surrogate pair.
    static std::size_t wholeCharacters(std::wstring_view text, std::size_t count)
    {
        const auto isHigh = [](wchar_t c) { return (c & 0xFC00) == 0xD800; };
        if (count < text.size() && isHigh(text[count - 1]))
            return count > 1 ? count - 1 : 2;
        return count;
    }

    void put(const MarkupStyle& style, std::wstring_view text, int width)
    {
        if (!plan_.words.empty() && !atLineStart_ && plan_.words.back().style == style) {
            plan_.words.back().text += text;
            plan_.words.back().width += width;
        } else {
            plan_.words.push_back({x_, y_, width, style, std::wstring(text)});
        }
        x_ += width;
        plan_.right = std::max(plan_.right, x_);
        atLineStart_ = false;
    }

    void nextLine()
    {
        x_ = surface_.leftMargin;
        y_ += surface_.lineHeight;
        atLineStart_ = true;
        ++plan_.lines;
        growTo(y_ + surface_.lineHeight);
    }

    void growTo(int bottom)
    {
        while (plan_.height < bottom)
            plan_.height += surface_.lineHeight;
    }

    const MarkupSurface& surface_;
    const MeasureText& measure_;
    MarkupPlan plan_;
    std::vector<Piece> word_;
    int x_, y_ = 0;
    bool atLineStart_ = true;
};

} // namespace

std::vector<MarkupRun> parseMarkup(std::wstring_view markup)
{
    return Reader().read(markup);
}

std::wstring plainText(std::wstring_view markup)
{
    std::wstring text;
    for (const MarkupRun& run : parseMarkup(markup)) {
        if (run.newLine)
            text += L"\r\n";
        text += run.text;
    }
    return text;
}

std::wstring literal(std::wstring_view value)
{
    std::wstring safe(value);
    for (wchar_t& c : safe) {
        if (c == L'~')
            c = kLiteralTilde;
        else if (c < L' ' || c == 0x7F)
            c = L' ';
    }
    return safe;
}

MarkupPlan planMarkup(const std::vector<MarkupRun>& runs, const MarkupSurface& surface,
                      const MeasureText& measure)
{
    MarkupSurface sane = surface;
    sane.lineHeight = std::max(1, surface.lineHeight);
    return Planner(sane, measure).plan(runs);
}

} // namespace velora

#include "core/clsOptionsModel.h"

#include "base/text.h"
#include "base/trap.h"
#include "core/modHotWordList.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "clsOptionsModel";

std::wstring joined(const std::vector<std::wstring>& words)
{
    std::wstring text;
    for (const std::wstring& word : words)
        text += (text.empty() ? L"" : L"\n") + word;
    return text;
}

std::wstring storedText(const OptionField& field)
{
    if (field.option)
        return textOf(presentValue(*field.option));
    return field.kind == FieldKind::words ? joined(hotWords()) : std::wstring();
}

bool write(const OptionField& field, const RegValue& value)
{
    try {
        if (field.option)
            setOptionValue(*field.option, value);
        else
            setHotWords(splitLines(textOf(value)));
        return true;
    } catch (...) {
        reportCurrentException(kModule, "save");
    }
    return false;
}

} // namespace

clsOptionsModel::clsOptionsModel(const std::vector<OptionPage>& pages)
{
    for (std::size_t page = 0; page < pages.size(); ++page)
        for (const OptionGroup& group : pages[page].groups)
            for (const OptionField& field : group.fields) {
                const std::wstring text = storedText(field);
                entries_.push_back({&field, page, text, text});
            }
}

std::optional<clsOptionsModel::Index> clsOptionsModel::indexOf(OptionId option) const
{
    for (Index i = 0; i < entries_.size(); ++i)
        if (entries_[i].field->option == option)
            return i;
    return std::nullopt;
}

bool clsOptionsModel::enabled(Index index) const
{
    const auto& needs = entries_[index].field->needs;
    const auto other = needs ? indexOf(*needs) : std::nullopt;
    return !other || (entries_[*other].text == textOf(RegValue(true)) && enabled(*other));
}

bool clsOptionsModel::changed() const
{
    return std::any_of(entries_.begin(), entries_.end(),
                       [this](const Entry& entry) { return touched(entry); });
}

void clsOptionsModel::change(Index index, const std::wstring& text)
{
    entries_[index].text = text;
}

void clsOptionsModel::follow(OptionId option)
{
    if (const auto index = indexOf(option))
        follow(entries_[*index]);
}

void clsOptionsModel::followAll()
{
    for (Entry& entry : entries_)
        follow(entry);
}

void clsOptionsModel::follow(Entry& entry)
{
    const bool mine = touched(entry);
    entry.stored = storedText(*entry.field);
    if (!mine)
        entry.text = entry.stored;
}

void clsOptionsModel::restoreDefaults(std::size_t page)
{
    for (Entry& entry : entries_)
        if (entry.page == page && entry.field->option)
            entry.text = textOf(optionDefault(*entry.field->option));
}

std::optional<clsOptionsModel::Index> clsOptionsModel::refused() const
{
    for (Index i = 0; i < entries_.size(); ++i)
        if (touched(entries_[i]) && enabled(i) && !fieldValue(*entries_[i].field, entries_[i].text))
            return i;
    return std::nullopt;
}

bool clsOptionsModel::save()
{
    bool all = true;
    for (Entry& entry : entries_) {
        if (!touched(entry))
            continue;
        const auto value = fieldValue(*entry.field, entry.text);
        if (value && !write(*entry.field, *value)) {
            all = false;
            continue;
        }
        entry.stored = entry.text = storedText(*entry.field);
    }
    return all;
}

} // namespace velora

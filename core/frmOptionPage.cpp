#include "core/frmOptionPage.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmOptionPage";
constexpr int kIndent = 18; // a check box's mark: what it rules stands under its text

/// How many fields of the group it depends on, one behind the other.
int depthOf(const OptionGroup& group, const OptionField& field)
{
    for (const OptionField& other : group.fields)
        if (field.needs && field.needs == other.option)
            return 1 + depthOf(group, other);
    return 0;
}

/// The fields in so many columns, filled row by row.
Box grid(const std::vector<Box>& fields, int columnCount)
{
    std::vector<std::vector<Box>> filled(static_cast<std::size_t>(columnCount));
    for (std::size_t i = 0; i < fields.size(); ++i)
        filled[i % filled.size()].push_back(fields[i]);
    std::vector<Box> each;
    for (const auto& column : filled)
        each.push_back(rows(column, kNear).grow());
    return columns(each, 2 * kGap).sameSizes();
}

} // namespace

frmOptionPage::frmOptionPage(HWND parent, const OptionPage& page, clsOptionsModel& model,
                             clsOptionsModel::Index first, std::function<void()> changed)
    : Form(kModule), parent_(parent), page_(page), model_(model), first_(first),
      changed_(std::move(changed))
{
}

FormOptions frmOptionPage::options() const
{
    FormOptions options;
    options.title = page_.name;
    options.kind = FormKind::child;
    options.owner = parent_;
    return options;
}

void frmOptionPage::onCreate()
{
    std::vector<Box> groups;
    for (const OptionGroup& group : page_.groups)
        groups.push_back(createGroup(group));
    const bool fills = page_.groups.back().fields.back().kind == FieldKind::words;
    if (fills)
        groups.back() = groups.back().grow();
    else
        groups.push_back(space());
    const Box layout = rows(groups);
    wanted_ = layout.preferredSize();
    setLayout(layout);
    refresh();
}

Box frmOptionPage::createGroup(const OptionGroup& group)
{
    groups_.emplace_back().create(*this, group.caption);
    std::vector<Box> fields;
    std::vector<std::pair<Label*, int>> labels; // with their indents
    int labelWidth = 0;
    for (const OptionField& field : group.fields) {
        const int indent = group.columns > 1 ? 0 : kIndent * depthOf(group, field);
        fields.push_back(createField(field, indent));
        if (Label* const label = controls_.back()->label()) {
            labels.emplace_back(label, indent);
            labelWidth = std::max(labelWidth, label->preferredSize().width + indent);
        }
    }
    for (const auto& [label, indent] : labels)
        label->setPreferredSize({labelWidth - indent, 0});
    return groups_.back().around(group.columns > 1 ? grid(fields, group.columns)
                                                   : rows(fields, kNear + 1));
}

Box frmOptionPage::createField(const OptionField& field, int indent)
{
    const clsOptionsModel::Index index = end();
    controls_.push_back(makeOptionControl(field.kind));
    OptionControl& control = *controls_.back();
    const Box box = control.create(*this, field, tips_);
    control.onChange = [this, index](const std::wstring& text) {
        model_.change(index, text);
        changed_();
    };
    control.onReplaced = [this] {
        model_.followAll();
        changed_();
    };
    const Box placed = rows({box.grow()}).margins(indent, 0, 0, 0);
    return field.kind == FieldKind::words ? placed.grow() : placed;
}

void frmOptionPage::refresh()
{
    for (std::size_t i = 0; i < controls_.size(); ++i) {
        controls_[i]->show(model_.entries()[first_ + i].text);
        controls_[i]->enable(model_.enabled(first_ + i));
    }
}

void frmOptionPage::commit()
{
    for (const auto& control : controls_)
        control->commit();
}

void frmOptionPage::focusField(clsOptionsModel::Index index)
{
    controls_[index - first_]->focus();
}

} // namespace velora

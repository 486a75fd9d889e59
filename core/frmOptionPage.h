#pragma once
// A page of the options window: the fields of one OptionPage in their groups.
#include "core/OptionControls.h"
#include "core/clsOptionsModel.h"

#include <deque>
#include <memory>
#include <vector>

namespace velora {

class frmOptionPage final : public Form {
public:
    /// `first`: the model's index of the page's first field. The fields show what the model holds;
    /// `changed` is called when the user has changed one.
    frmOptionPage(HWND parent, const OptionPage& page, clsOptionsModel& model,
                  clsOptionsModel::Index first, std::function<void()> changed);

    Size wantedSize() const { return wanted_; }
    /// The next field's index in the model.
    clsOptionsModel::Index end() const { return first_ + controls_.size(); }
    /// Shows what the model holds.
    void refresh();
    void commit();
    void focusField(clsOptionsModel::Index index);

protected:
    FormOptions options() const override;
    void onCreate() override;

private:
    Box createGroup(const OptionGroup& group);
    Box createField(const OptionField& field, int indent);

    HWND parent_;
    const OptionPage& page_;
    clsOptionsModel& model_;
    clsOptionsModel::Index first_;
    std::function<void()> changed_;
    Size wanted_;
    std::deque<GroupBox> groups_;
    std::vector<std::unique_ptr<OptionControl>> controls_;
    ToolTip tips_;
};

} // namespace velora

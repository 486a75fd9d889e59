#include "sounds/clsSoundScan.h"

#include "base/files.h"
#include "sounds/fileFacts.h"
#include "sounds/modWavList.h"

#include <algorithm>

namespace velora {

clsSoundScan::clsSoundScan(std::vector<std::wstring> roots)
{
    std::reverse(roots.begin(), roots.end());
    for (std::wstring& root : roots) {
        while (!root.empty() && (root.back() == L'\\' || root.back() == L'/'))
            root.pop_back();
        todo_.push_back({std::move(root), 1.0 / static_cast<double>(roots.size())});
    }
}

std::wstring clsSoundScan::current() const
{
    return todo_.empty() ? std::wstring() : todo_.back().folder;
}

bool clsSoundScan::step()
{
    if (todo_.empty())
        return false;
    const Todo now = std::move(todo_.back());
    todo_.pop_back();
    ++folders_;
    Found found{now.folder, {}};
    std::vector<std::wstring> below;
    visitFolder(now.folder, [&](const FileFound& file) {
        if (file.folder && !file.link)
            below.push_back(joinPath(now.folder, file.name));
        else if (!file.folder && kindOfFile(file.name))
            found.files.emplace_back(file.name);
        return true;
    });
    // A folder's share is dealt out to those in it: what has none is done.
    if (below.empty())
        progress_ = std::min(1.0, progress_ + now.share);
    std::sort(below.rbegin(), below.rend());
    for (std::wstring& folder : below)
        todo_.push_back({std::move(folder), now.share / static_cast<double>(below.size())});
    if (!found.files.empty()) {
        std::sort(found.files.begin(), found.files.end());
        files_ += found.files.size();
        found_.push_back(std::move(found));
    }
    if (todo_.empty())
        progress_ = 1;
    return true;
}

std::wstring clsSoundScan::fileNamed(std::wstring_view loweredName, std::size_t from) const
{
    for (std::size_t i = from; i < found_.size(); ++i)
        for (const std::wstring& file : found_[i].files)
            if (wavName(file, false) == loweredName)
                return joinPath(found_[i].folder, file);
    return {};
}

} // namespace velora

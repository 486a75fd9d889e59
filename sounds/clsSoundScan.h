#pragma once
// The search for sounds on a disk, in steps, so that a window can show how far it is and stop it.
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace velora {

class clsSoundScan {
public:
    /// Searches these folders and all below them; links to other places are not followed.
    explicit clsSoundScan(std::vector<std::wstring> roots);

    /// A folder in which there are sounds.
    struct Found {
        std::wstring folder;
        std::vector<std::wstring> files; ///< names
    };

    /// Looks at one more folder. False when there is none left.
    bool step();
    /// Between 0 and 1; never goes back. A guess: nobody knows how many folders are still to come.
    double progress() const { return progress_; }
    /// The folder that the next step looks at; empty at the end.
    std::wstring current() const;

    const std::vector<Found>& found() const { return found_; }
    std::size_t folders() const { return folders_; }
    std::size_t files() const { return files_; }

    /// The file of this sound name (lower case), where it was found first; empty when it was not.
    /// `from`: the index in found() to begin at.
    std::wstring fileNamed(std::wstring_view loweredName, std::size_t from = 0) const;

private:
    struct Todo {
        std::wstring folder;
        double share; ///< of the whole work
    };
    std::vector<Todo> todo_;
    std::vector<Found> found_;
    std::size_t folders_ = 0, files_ = 0;
    double progress_ = 0;
};

} // namespace velora

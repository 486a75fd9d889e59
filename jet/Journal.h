#pragma once
// The journal that makes a change of many pages one step: the new pages go to a file beside the
// database first, as a whole and with a checksum; only then into the database. A journal found at
// opening is replayed when it is complete and belongs to this file, else dropped.
#include "jet/JetFile.h"
#include "jet/Page.h"

#include <vector>

namespace velora::jet {

/// A quick 64-bit sum that tells torn pages from whole ones; no defence against intent.
std::uint64_t checksum(const void* data, std::size_t size, std::uint64_t seed = 0);

struct ChangedPage {
    PageNo no;
    std::uint64_t before; ///< sum of what the file holds there; 0 beyond its end
    const Page* after;
};

class Journal {
public:
    Journal(JetFiles& files, const std::wstring& databasePath);
    /// Removes the journal's file, unless a complete one still has to be replayed.
    ~Journal();

    static std::wstring pathFor(const std::wstring& databasePath);

    /// Called once, when the database has been opened.
    void recover(JetFile& database);

    /// After this the change will happen, whatever comes.
    void write(const std::vector<ChangedPage>& pages, PageNo pagesBefore);
    /// The change stands in the database.
    void clear();

private:
    JetFiles& files_;
    std::wstring path_;
    std::unique_ptr<JetFile> file_;
    std::string buffer_;
    bool pending_ = false;
};

} // namespace velora::jet

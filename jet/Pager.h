#pragma once
// The pages of an open database: a bounded cache, and changes that happen as a whole or not at all.
#include "jet/Journal.h"

namespace velora::jet {

class Pager {
public:
    /// Opens the file for this caller alone and finishes what an interrupted writer left.
    Pager(JetFiles& files, const std::wstring& path, JetFiles::Mode mode);

    PageNo pageCount() const { return pageCount_; }
    /// Grows with every change that is undone; what was remembered from pages is void then.
    unsigned generation() const { return generation_; }

    /// References stay good until the next trim(), and follow later changes of the page. A page
    /// beyond the end is damage.
    const Page& read(PageNo no) { return frame(no).page; }
    /// Only inside an Operation.
    Page& write(PageNo no);
    /// A new page of zeros at the end.
    Page& append(PageNo& no);

    /// Room beside a page for what its reader has worked out; emptied when the page changes.
    std::vector<std::uint16_t>& notes(PageNo no) { return frame(no).notes; }

    /// Lets go of pages beyond the cache's size. Not while references are held.
    void trim();

    void begin();
    void commit();
    void rollback();
    bool inTransaction() const { return transaction_; }

    /// One change of the database: what is written inside happens as a whole at done(), or not at
    /// all. Inner operations belong to the outermost; outside a transaction that one commits.
    class Operation {
    public:
        explicit Operation(Pager& pager);
        ~Operation();
        void done();

    private:
        Pager& pager_;
        bool done_ = false;
    };

private:
    struct Frame {
        Page page;
        std::vector<std::uint16_t> notes;
        std::uint64_t onDisk = 0; ///< sum of the page in the file, once dirty
        bool dirty = false;
        bool used = false;
        bool saved = false; ///< the present operation has its former content
    };
    struct Saved {
        PageNo no;
        bool dirty;
        Page page;
    };

    Frame& frame(PageNo no);
    void load(PageNo no);
    void undoOperation();
    void endOperation();
    void store();

    std::unique_ptr<JetFile> file_;
    Journal journal_;
    PageNo pageCount_ = 0;
    PageNo pagesOnDisk_ = 0;
    PageNo pagesBeforeOperation_ = 0;
    std::vector<std::unique_ptr<Frame>> frames_; ///< by page number; null = not in the cache
    std::vector<PageNo> resident_;
    std::vector<PageNo> dirty_;
    std::vector<Saved> saved_;
    unsigned generation_ = 0;
    int depth_ = 0;
    bool transaction_ = false;
    bool broken_ = false;
};

} // namespace velora::jet

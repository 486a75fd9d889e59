#include "jet/Pager.h"

#include <algorithm>

namespace velora::jet {
namespace {

constexpr std::size_t kCachedPages = 1024;       // 4 MB
constexpr std::size_t kTransactionPages = 16384; // 64 MB
constexpr std::uint64_t kMaxFile = 0x7FFFF000;

} // namespace

Pager::Pager(JetFiles& files, const std::wstring& path, JetFiles::Mode mode)
    : file_(files.open(path, mode)), journal_(files, path)
{
    journal_.recover(*file_);
    const std::uint64_t size = file_->size();
    require(size <= kMaxFile, "the file is longer than a database can be");
    pageCount_ = pagesOnDisk_ = static_cast<PageNo>(size / kPageSize);
    frames_.resize(pageCount_);
}

Pager::Frame& Pager::frame(PageNo no)
{
    if (no >= pageCount_)
        damaged("a page beyond the end of the file");
    if (!frames_[no])
        load(no);
    frames_[no]->used = true;
    return *frames_[no];
}

void Pager::load(PageNo no)
{
    auto fresh = std::make_unique<Frame>();
    const std::uint64_t at = static_cast<std::uint64_t>(no) * kPageSize;
    if (file_->read(at, fresh->page.bytes.data(), kPageSize) != kPageSize)
        throw JetError(jeterr::kDiskError, "the file is shorter than it was");
    resident_.push_back(no);
    frames_[no] = std::move(fresh);
}

Page& Pager::write(PageNo no)
{
    Frame& target = frame(no);
    if (!target.saved) {
        saved_.push_back({no, target.dirty, target.page});
        target.saved = true;
    }
    if (!target.dirty) {
        target.onDisk = no < pagesOnDisk_ ? checksum(target.page.bytes.data(), kPageSize) : 0;
        target.dirty = true;
        dirty_.push_back(no);
    }
    target.notes.clear();
    return target.page;
}

Page& Pager::append(PageNo& no)
{
    if ((static_cast<std::uint64_t>(pageCount_) + 1) * kPageSize > kMaxFile)
        throw JetError(jeterr::kTooLarge, "the database has reached its largest size");
    no = pageCount_;
    frames_.resize(no + 1);
    resident_.reserve(resident_.size() + 1);
    frames_[no] = std::make_unique<Frame>();
    resident_.push_back(no);
    ++pageCount_;
    return write(no);
}

void Pager::trim()
{
    if (depth_ || resident_.size() <= kCachedPages + kCachedPages / 4 + dirty_.size())
        return;
    // Two rounds at most: the first spares what was used since the last time.
    for (int round = 0; round < 2 && resident_.size() > kCachedPages + dirty_.size(); ++round) {
        std::erase_if(resident_, [&](PageNo no) {
            Frame& candidate = *frames_[no];
            if (candidate.dirty || candidate.used) {
                candidate.used = false;
                return false;
            }
            frames_[no].reset();
            return true;
        });
    }
}

Pager::Operation::Operation(Pager& pager) : pager_(pager)
{
    if (pager_.broken_)
        throw JetError(jeterr::kDiskError, "a change could not be written; open the file again");
    if (pager_.depth_ == 0) {
        pager_.trim();
        if (pager_.dirty_.size() > kTransactionPages)
            throw JetError(jeterr::kTooLarge, "the transaction is too large");
        pager_.pagesBeforeOperation_ = pager_.pageCount_;
    }
    ++pager_.depth_;
}

Pager::Operation::~Operation()
{
    if (!done_) {
        if (pager_.depth_ == 1)
            pager_.undoOperation();
        --pager_.depth_;
    }
}

void Pager::Operation::done()
{
    if (pager_.depth_ == 1) {
        if (!pager_.transaction_)
            pager_.store();
        pager_.endOperation();
    }
    --pager_.depth_;
    done_ = true;
}

void Pager::endOperation()
{
    for (const Saved& page : saved_)
        if (page.no < pageCount_ && frames_[page.no])
            frames_[page.no]->saved = false;
    saved_.clear();
}

void Pager::undoOperation()
{
    for (const Saved& page : saved_) {
        Frame& target = *frames_[page.no];
        target.page = page.page;
        target.dirty = page.dirty;
        target.notes.clear();
    }
    std::erase_if(dirty_,
                  [&](PageNo no) { return no >= pagesBeforeOperation_ || !frames_[no]->dirty; });
    endOperation();
    std::erase_if(resident_, [&](PageNo no) { return no >= pagesBeforeOperation_; });
    frames_.resize(pagesBeforeOperation_);
    pageCount_ = pagesBeforeOperation_;
    ++generation_;
}

void Pager::store()
{
    if (dirty_.empty())
        return;
    std::sort(dirty_.begin(), dirty_.end());
    std::vector<ChangedPage> changed;
    changed.reserve(dirty_.size());
    for (const PageNo no : dirty_)
        changed.push_back({no, frames_[no]->onDisk, &frames_[no]->page});
    journal_.write(changed, pagesOnDisk_);
    // From here on only a new opening can tell how far the file got.
    broken_ = true;
    for (const ChangedPage& page : changed)
        file_->write(static_cast<std::uint64_t>(page.no) * kPageSize, page.after->bytes.data(),
                     kPageSize);
    file_->flush();
    journal_.clear();
    broken_ = false;
    for (const PageNo no : dirty_)
        frames_[no]->dirty = false;
    dirty_.clear();
    pagesOnDisk_ = pageCount_;
}

void Pager::begin()
{
    if (transaction_)
        throw JetError(jeterr::kTransaction, "a transaction is open already");
    transaction_ = true;
}

void Pager::commit()
{
    if (!transaction_)
        throw JetError(jeterr::kTransaction, "no transaction is open");
    if (broken_)
        throw JetError(jeterr::kDiskError, "a change could not be written; open the file again");
    store();
    transaction_ = false;
}

void Pager::rollback()
{
    if (!transaction_)
        throw JetError(jeterr::kTransaction, "no transaction is open");
    transaction_ = false;
    for (const PageNo no : dirty_)
        frames_[no].reset();
    std::erase_if(resident_, [&](PageNo no) { return !frames_[no]; });
    dirty_.clear();
    frames_.resize(pagesOnDisk_);
    pageCount_ = pagesOnDisk_;
    ++generation_;
}

} // namespace velora::jet

#include "jet/Journal.h"

namespace velora::jet {
namespace {

// Head: magic, number of pages, pages of the database before, 0, sum of all that follows and of
// the three numbers. Then an entry for each page (number, 0, sum before, sum after), then the
// pages.
constexpr std::size_t kHead = 24;
constexpr std::size_t kEntry = 24;
constexpr std::uint32_t kMagic = 0x314A4C56;
constexpr std::size_t kSector = 512;
/// A journal of a huge transaction is cut back to nothing rather than kept for reuse.
constexpr std::uint64_t kKeptSize = 1u << 20;

void add64(std::string& to, std::uint64_t value)
{
    add32(to, static_cast<std::uint32_t>(value));
    add32(to, static_cast<std::uint32_t>(value >> 32));
}

std::uint64_t u64(Bytes bytes, std::size_t at)
{
    return bytes.u32(at) | static_cast<std::uint64_t>(bytes.u32(at + 4)) << 32;
}

std::uint64_t sumOf(Bytes journal)
{
    return checksum(journal.data() + kHead, journal.size() - kHead, u64(journal, 4));
}

std::string readJournal(JetFile& file)
{
    std::string head(kHead, '\0');
    if (file.read(0, head.data(), kHead) != kHead || Bytes(head).u32(0) != kMagic)
        return {};
    const std::uint64_t size =
        kHead + Bytes(head).u32(4) * static_cast<std::uint64_t>(kEntry + kPageSize);
    if (size > file.size())
        return {};
    std::string all(static_cast<std::size_t>(size), '\0');
    if (file.read(0, all.data(), all.size()) != all.size()
        || sumOf(Bytes(all)) != u64(Bytes(all), 16))
        return {};
    return all;
}

/// True when every page is as it was before or after the change. One may be neither: the page whose
/// writing was cut, which begins like the new one. A journal left beside a file that has since been
/// replaced fails this.
bool belongsTo(Bytes journal, JetFile& database)
{
    const std::uint32_t count = journal.u32(4);
    if (journal.u32(8) > database.size() / kPageSize)
        return false;
    std::uint32_t strange = 0;
    Page page;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Bytes entry = journal.part(kHead + i * kEntry, kEntry);
        const std::uint64_t at = static_cast<std::uint64_t>(entry.u32(0)) * kPageSize;
        if (entry.u32(0) >= journal.u32(8))
            continue; // appended by the change: it was nothing before
        const std::size_t got = database.read(at, page.bytes.data(), kPageSize);
        const std::uint64_t sum = checksum(page.bytes.data(), got);
        if (sum == u64(entry, 8) || sum == u64(entry, 16))
            continue;
        const Bytes after = journal.part(kHead + count * kEntry + i * kPageSize, kPageSize);
        if (std::memcmp(page.bytes.data(), after.data(), kSector) != 0 || ++strange > 1)
            return false;
    }
    return true;
}

} // namespace

std::uint64_t checksum(const void* data, std::size_t size, std::uint64_t seed)
{
    constexpr std::uint64_t kPrime = 0x9E3779B185EBCA87u;
    const auto* bytes = static_cast<const Byte*>(data);
    std::uint64_t sum = seed ^ (size * kPrime);
    while (size >= 8) {
        std::uint64_t word;
        std::memcpy(&word, bytes, 8);
        sum = (sum ^ word) * kPrime;
        sum ^= sum >> 29;
        bytes += 8;
        size -= 8;
    }
    for (; size; --size)
        sum = (sum ^ *bytes++) * kPrime;
    return sum ^ sum >> 32;
}

Journal::Journal(JetFiles& files, const std::wstring& databasePath)
    : files_(files), path_(pathFor(databasePath))
{
}

Journal::~Journal()
{
    if (!file_ || pending_)
        return;
    file_.reset();
    try {
        files_.remove(path_);
    } catch (...) {
        // It is empty or cleared: the next opening drops it.
    }
}

std::wstring Journal::pathFor(const std::wstring& databasePath)
{
    return databasePath + L".jrn";
}

void Journal::recover(JetFile& database)
{
    if (!files_.exists(path_))
        return;
    {
        const auto file = files_.open(path_, JetFiles::Mode::existing);
        const std::string found = readJournal(*file);
        const Bytes journal(found);
        if (!found.empty() && belongsTo(journal, database)) {
            const std::uint32_t count = journal.u32(4);
            for (std::uint32_t i = 0; i < count; ++i) {
                const std::uint64_t no = journal.u32(kHead + i * kEntry);
                const std::size_t at = kHead + count * kEntry + i * kPageSize;
                database.write(no * kPageSize, journal.data() + at, kPageSize);
            }
            database.flush();
        }
    }
    files_.remove(path_);
}

void Journal::write(const std::vector<ChangedPage>& pages, PageNo pagesBefore)
{
    buffer_.clear();
    buffer_.reserve(kHead + pages.size() * (kEntry + kPageSize));
    add32(buffer_, kMagic);
    add32(buffer_, static_cast<std::uint32_t>(pages.size()));
    add32(buffer_, pagesBefore);
    add32(buffer_, 0);
    add64(buffer_, 0);
    for (const ChangedPage& page : pages) {
        add64(buffer_, page.no);
        add64(buffer_, page.before);
        add64(buffer_, checksum(page.after->bytes.data(), kPageSize));
    }
    for (const ChangedPage& page : pages)
        buffer_.append(page.after->view().text());
    std::string sum;
    add64(sum, sumOf(Bytes(buffer_)));
    buffer_.replace(16, 8, sum);

    if (!file_)
        file_ = files_.open(path_, JetFiles::Mode::replace);
    try {
        file_->write(0, buffer_.data(), buffer_.size());
        file_->flush();
    } catch (...) {
        // The caller will say that nothing was changed; a later opening must not change it after
        // all.
        file_->resize(0);
        throw;
    }
    pending_ = true;
}

void Journal::clear()
{
    // Spoiling the head is enough; the file stays open for the next change.
    if (buffer_.size() > kKeptSize) {
        file_->resize(0);
        buffer_ = {};
    } else {
        const std::string nothing(kHead, '\0');
        file_->write(0, nothing.data(), nothing.size());
    }
    pending_ = false;
}

} // namespace velora::jet

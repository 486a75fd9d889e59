#include "jet/IndexPage.h"

#include <algorithm>

namespace velora::jet {
namespace {

constexpr std::size_t kMask = 27;
constexpr std::size_t kMaskSize = 453;
constexpr std::size_t kEntries = 480;

/// The ends of the entries, from the mask: bit k is set when an entry ends at byte k.
void readEnds(const Page& page, std::vector<std::uint16_t>& ends)
{
    for (std::size_t byte = 0; byte < kMaskSize; ++byte) {
        unsigned bits = page.bytes[kMask + byte];
        for (std::size_t bit = byte * 8; bits; bits >>= 1, ++bit)
            if (bits & 1)
                ends.push_back(static_cast<std::uint16_t>(bit));
    }
}

/// `own`: bytes of an entry that never lie in the common prefix; `least`: bytes of a whole entry.
void checkEnds(const std::vector<std::uint16_t>& ends, std::size_t prefix, std::size_t own,
               std::size_t least)
{
    std::size_t start = 0;
    for (std::size_t i = 0; i < ends.size(); ++i) {
        require(ends[i] > start && ends[i] <= kIndexRoom, "an index entry lies outside its page");
        const std::size_t size = ends[i] - start;
        require(size >= own && size + (i ? prefix : 0) >= least, "an index entry is too short");
        start = ends[i];
    }
    require(ends.empty() || prefix + own <= ends[0], "an index prefix is too long");
}

void writeMask(Page& page, const std::vector<std::uint16_t>& ends)
{
    std::fill_n(page.bytes.begin() + kMask, kMaskSize, Byte{0});
    for (const std::uint16_t end : ends)
        page.bytes[kMask + end / 8] |= static_cast<Byte>(1u << end % 8);
    page.put16(2, static_cast<unsigned>(kIndexRoom - (ends.empty() ? 0 : ends.back())));
}

std::size_t commonPrefix(std::string_view a, std::string_view b)
{
    const std::size_t most = std::min(a.size(), b.size());
    std::size_t n = 0;
    while (n < most && a[n] == b[n])
        ++n;
    return n;
}

} // namespace

IndexPage::IndexPage(Pager& pager, PageNo no, PageNo owner) : page_(&pager.read(no))
{
    const Byte kind = page_->u8(0);
    require((kind == kLeafPage || kind == kNodePage) && page_->u8(1) == 1 && page_->u32(4) == owner,
            "no index page of this table");
    leaf_ = kind == kLeafPage;
    prefix_ = page_->u16(24);
    auto& notes = pager.notes(no);
    if (notes.empty()) {
        readEnds(*page_, notes);
        try {
            checkEnds(notes, prefix_, leaf_ ? 0 : kChildSize,
                      kRowIdSize + (leaf_ ? 0 : kChildSize));
        } catch (...) {
            notes.clear();
            throw;
        }
    }
    ends_ = &notes;
}

/// The bytes that lie on the page for the entry, without a node's child number.
std::string_view IndexPage::stored(std::size_t i) const
{
    const std::size_t from = i ? (*ends_)[i - 1] : 0;
    const std::size_t end = (*ends_)[i] - (leaf_ ? 0 : kChildSize);
    return page_->view().part(kEntries + from, end - from).text();
}

std::string IndexPage::entry(std::size_t i) const
{
    std::string whole;
    if (i)
        whole = page_->view().part(kEntries, prefix_).text();
    return whole.append(stored(i));
}

PageNo IndexPage::child(std::size_t i) const
{
    const Bytes at = page_->view().part(kEntries + (*ends_)[i] - kChildSize, kChildSize);
    return static_cast<PageNo>(at.u8(0)) << 24 | static_cast<PageNo>(at.u8(1)) << 16
           | static_cast<PageNo>(at.u8(2)) << 8 | at.u8(3);
}

int IndexPage::compare(std::size_t i, std::string_view bytes) const
{
    if (i && prefix_) {
        const std::string_view head = page_->view().part(kEntries, prefix_).text();
        const int first = head.compare(bytes.substr(0, prefix_));
        if (first)
            return first;
        bytes.remove_prefix(prefix_);
    }
    return stored(i).compare(bytes);
}

std::size_t IndexPage::lowerBound(std::string_view bytes) const
{
    std::size_t low = 0, high = count();
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (compare(middle, bytes) < 0)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

bool IndexPage::startsWith(std::size_t i, std::string_view bytes) const
{
    if (i && prefix_) {
        const std::string_view head = page_->view().part(kEntries, prefix_).text();
        const std::size_t both = std::min(head.size(), bytes.size());
        if (head.substr(0, both) != bytes.substr(0, both))
            return false;
        bytes.remove_prefix(both);
    }
    return stored(i).starts_with(bytes);
}

std::size_t packedSize(const std::vector<std::string>& entries, std::size_t from, std::size_t to)
{
    if (from >= to)
        return 0;
    std::size_t size = 0;
    for (std::size_t i = from; i < to; ++i)
        size += entries[i].size();
    return size - (to - from - 1) * commonPrefix(entries[from], entries[to - 1]);
}

void writeIndexPage(Page& page, PageNo owner, bool leaf, const IndexLinks& links,
                    const std::vector<std::string>& entries)
{
    std::size_t whole = 0;
    for (const std::string& entry : entries)
        whole += entry.size();
    std::size_t prefix = 0;
    if (whole > kIndexRoom) {
        prefix = commonPrefix(entries.front(), entries.back());
        // A node's child number is never part of the prefix.
        prefix = std::min(prefix, entries.front().size() - (leaf ? 1 : kChildSize + 1));
    }
    page = {};
    page.put8(0, leaf ? kLeafPage : kNodePage);
    page.put8(1, 1);
    page.put32(4, owner);
    page.put32(12, links.previous);
    page.put32(16, links.next);
    page.put32(20, links.tail);
    page.put16(24, static_cast<unsigned>(prefix));
    page.put8(26, leaf ? 0 : 1);
    std::vector<std::uint16_t> ends;
    ends.reserve(entries.size());
    std::size_t at = 0;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const Bytes rest = Bytes(entries[i]).from(i ? prefix : 0);
        page.put(kEntries + at, rest);
        at += rest.size();
        ends.push_back(static_cast<std::uint16_t>(at));
    }
    writeMask(page, ends);
}

bool insertInPlace(Pager& pager, PageNo no, PageNo owner, std::size_t i, std::string_view entry)
{
    const IndexPage look(pager, no, owner);
    const std::size_t prefix = look.prefix();
    const std::size_t used = look.used();
    if (!look.isLeaf() || (i == 0 && prefix) || entry.size() <= prefix
        || used + entry.size() - prefix > kIndexRoom)
        return false;
    if (prefix && entry.substr(0, prefix) != std::string_view(look.entry(0)).substr(0, prefix))
        return false;
    std::vector<std::uint16_t> ends = pager.notes(no);
    Page& page = pager.write(no);
    const std::size_t at = i ? ends[i - 1] : 0;
    const std::string_view rest = entry.substr(prefix);
    page.put(kEntries + at + rest.size(), page.view().part(kEntries + at, used - at));
    page.put(kEntries + at, Bytes(rest));
    for (std::size_t k = i; k < ends.size(); ++k)
        ends[k] = static_cast<std::uint16_t>(ends[k] + rest.size());
    ends.insert(ends.begin() + static_cast<long>(i), static_cast<std::uint16_t>(at + rest.size()));
    writeMask(page, ends);
    pager.notes(no) = std::move(ends);
    return true;
}

bool eraseInPlace(Pager& pager, PageNo no, PageNo owner, std::size_t i)
{
    const IndexPage look(pager, no, owner);
    if (!look.isLeaf() || i == 0)
        return false;
    std::vector<std::uint16_t> ends = pager.notes(no);
    Page& page = pager.write(no);
    const std::size_t from = ends[i - 1], to = ends[i], used = ends.back();
    page.put(kEntries + from, page.view().part(kEntries + to, used - to));
    std::fill(page.bytes.begin() + static_cast<long>(kEntries + used - (to - from)),
              page.bytes.begin() + static_cast<long>(kEntries + used), Byte{0});
    ends.erase(ends.begin() + static_cast<long>(i));
    for (std::size_t k = i; k < ends.size(); ++k)
        ends[k] = static_cast<std::uint16_t>(ends[k] - (to - from));
    writeMask(page, ends);
    pager.notes(no) = std::move(ends);
    return true;
}

} // namespace velora::jet

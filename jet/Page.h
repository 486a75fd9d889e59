#pragma once
// Pages and bytes, every access checked: what a damaged file says never leads outside its page.
#include "jet/JetError.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace velora::jet {

inline constexpr std::size_t kPageSize = 4096;
using PageNo = std::uint32_t;
using Byte = unsigned char;

enum PageKind : Byte { kHeaderPage, kDataPage, kDefPage, kNodePage, kLeafPage, kBitmapPage };

/// Bytes of somebody else; reading outside them is damage (3049). All numbers are little-endian.
class Bytes {
public:
    Bytes() = default;
    Bytes(const Byte* data, std::size_t size) : data_(data), size_(size) {}
    Bytes(std::string_view text)
        : data_(reinterpret_cast<const Byte*>(text.data())), size_(text.size())
    {
    }

    std::size_t size() const { return size_; }
    const Byte* data() const { return data_; }
    std::string_view text() const { return {reinterpret_cast<const char*>(data_), size_}; }

    Byte u8(std::size_t at) const
    {
        check(at, 1);
        return data_[at];
    }
    std::uint16_t u16(std::size_t at) const
    {
        check(at, 2);
        return static_cast<std::uint16_t>(data_[at] | data_[at + 1] << 8);
    }
    std::uint32_t u32(std::size_t at) const
    {
        check(at, 4);
        return static_cast<std::uint32_t>(data_[at])
               | static_cast<std::uint32_t>(data_[at + 1]) << 8
               | static_cast<std::uint32_t>(data_[at + 2]) << 16
               | static_cast<std::uint32_t>(data_[at + 3]) << 24;
    }
    Bytes part(std::size_t at, std::size_t count) const
    {
        check(at, count);
        return {data_ + at, count};
    }
    Bytes from(std::size_t at) const
    {
        check(at, 0);
        return {data_ + at, size_ - at};
    }

private:
    void check(std::size_t at, std::size_t count) const
    {
        if (at > size_ || count > size_ - at)
            damaged("an offset points outside its page");
    }
    const Byte* data_ = nullptr;
    std::size_t size_ = 0;
};

/// One page of the file.
struct Page {
    std::array<Byte, kPageSize> bytes{};

    Bytes view() const { return {bytes.data(), bytes.size()}; }
    Byte u8(std::size_t at) const { return view().u8(at); }
    std::uint16_t u16(std::size_t at) const { return view().u16(at); }
    std::uint32_t u32(std::size_t at) const { return view().u32(at); }

    void put8(std::size_t at, unsigned value)
    {
        require(at < kPageSize, "an offset points outside its page");
        bytes[at] = static_cast<Byte>(value);
    }
    void put16(std::size_t at, unsigned value)
    {
        put8(at + 1, value >> 8);
        put8(at, value);
    }
    void put32(std::size_t at, std::uint32_t value)
    {
        put16(at + 2, value >> 16);
        put16(at, value);
    }
    void put(std::size_t at, Bytes from)
    {
        require(at <= kPageSize && from.size() <= kPageSize - at,
                "an offset points outside its page");
        if (from.size())
            std::memmove(bytes.data() + at, from.data(), from.size());
    }
};

/// A row: its page and its slot there. Rows do not move, so this names a record for its life.
struct RowId {
    PageNo page = 0;
    Byte row = 0;
    bool operator==(const RowId&) const = default;
};

/// The pointer form of the file: row number in the low byte, page in the upper three.
inline RowId rowAt(std::uint32_t pointer)
{
    return {pointer >> 8, static_cast<Byte>(pointer)};
}
inline std::uint32_t pointerTo(RowId id)
{
    return id.page << 8 | id.row;
}

inline void add8(std::string& to, unsigned value)
{
    to += static_cast<char>(value);
}
inline void add16(std::string& to, unsigned value)
{
    add8(to, value);
    add8(to, value >> 8);
}
inline void add32(std::string& to, std::uint32_t value)
{
    add16(to, value);
    add16(to, value >> 16);
}

} // namespace velora::jet

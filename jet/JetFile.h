#pragma once
// Where the engine's bytes lie. The system's files are one answer; tests put memory, and writers
// that stop half-way, in their place.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace velora {

/// One open file. All calls throw JetError 3043 when the disk refuses.
class JetFile {
public:
    virtual ~JetFile() = default;
    virtual std::uint64_t size() = 0;
    /// Bytes read; fewer than asked only at the end of the file.
    virtual std::size_t read(std::uint64_t at, void* into, std::size_t count) = 0;
    /// Writes all; beyond the end the file grows.
    virtual void write(std::uint64_t at, const void* from, std::size_t count) = 0;
    /// Returns when everything written is on the disk.
    virtual void flush() = 0;
    virtual void resize(std::uint64_t size) = 0;
};

class JetFiles {
public:
    enum class Mode {
        existing,  ///< 3024 when it is missing
        createNew, ///< 3204 when it is there
        replace    ///< empty, whether it was there or not
    };
    virtual ~JetFiles() = default;
    /// Opens for this caller alone: 3045 while somebody else has the file open.
    virtual std::unique_ptr<JetFile> open(const std::wstring& path, Mode mode) = 0;
    virtual bool exists(const std::wstring& path) = 0;
    virtual void remove(const std::wstring& path) = 0;
    /// Puts `from` in the place of `to`, whether that was there or not, in one step.
    virtual void rename(const std::wstring& from, const std::wstring& to) = 0;
};

/// The disk.
JetFiles& systemJetFiles();

} // namespace velora

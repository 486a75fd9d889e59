#pragma once
// Files in memory for the database engine, that can stop a writer at any point.
#include "jet/JetError.h"
#include "jet/JetFile.h"

#include <map>
#include <set>

namespace velora {

/// Thrown when the writer's time is up; nothing of the engine catches it.
struct WriterKilled {};

class MemoryFiles final : public JetFiles {
public:
    std::map<std::wstring, std::shared_ptr<std::string>> files;
    /// Steps until the writer is stopped: one for each 512 bytes written and for every other change
    /// of a file. A stopped write leaves the blocks before. Negative = never.
    long budget = -1;
    bool killed = false;
    /// Steps taken since the last reset.
    long steps = 0;
    /// Throws 3043 instead of stopping for good, once, at that step.
    bool failOnce = false;

    MemoryFiles() = default;
    /// The same contents, nothing open.
    MemoryFiles(const MemoryFiles& other) : JetFiles()
    {
        for (const auto& [name, bytes] : other.files)
            files[name] = std::make_shared<std::string>(*bytes);
    }
    MemoryFiles& operator=(const MemoryFiles&) = delete;

    std::unique_ptr<JetFile> open(const std::wstring& path, Mode mode) override
    {
        if (opened_.count(path))
            throw JetError(jeterr::kInUse, "the file is in use");
        const bool there = files.count(path) != 0;
        if (mode == Mode::existing && !there)
            throw JetError(jeterr::kFileMissing, "the file is missing");
        if (mode == Mode::createNew && there)
            throw JetError(jeterr::kDatabaseExists, "the file exists");
        if (mode != Mode::existing) {
            step();
            files[path] = std::make_shared<std::string>();
        }
        return std::make_unique<File>(*this, path);
    }
    bool exists(const std::wstring& path) override { return files.count(path) != 0; }
    void remove(const std::wstring& path) override
    {
        step();
        files.erase(path);
    }
    void rename(const std::wstring& from, const std::wstring& to) override
    {
        step();
        if (opened_.count(from) || opened_.count(to))
            throw JetError(jeterr::kDiskError, "the file is open");
        files[to] = files.at(from);
        files.erase(from);
    }

    void step()
    {
        if (killed)
            throw WriterKilled();
        ++steps;
        if (budget < 0)
            return;
        if (budget-- > 0)
            return;
        if (failOnce) {
            failOnce = false;
            throw JetError(jeterr::kDiskError, "the disk is full");
        }
        killed = true;
        throw WriterKilled();
    }

private:
    class File final : public JetFile {
    public:
        File(MemoryFiles& owner, const std::wstring& path)
            : owner_(owner), path_(path), bytes_(owner.files.at(path))
        {
            owner_.opened_.insert(path);
        }
        ~File() override { owner_.opened_.erase(path_); }

        std::uint64_t size() override { return bytes_->size(); }
        std::size_t read(std::uint64_t at, void* into, std::size_t count) override
        {
            if (at >= bytes_->size())
                return 0;
            return bytes_->copy(static_cast<char*>(into), count, static_cast<std::size_t>(at));
        }
        void write(std::uint64_t at, const void* from, std::size_t count) override
        {
            const auto* data = static_cast<const char*>(from);
            for (std::size_t done = 0; done < count; done += 512) {
                owner_.step();
                const std::size_t part = std::min<std::size_t>(512, count - done);
                const auto place = static_cast<std::size_t>(at) + done;
                if (bytes_->size() < place + part)
                    bytes_->resize(place + part);
                bytes_->replace(place, part, data + done, part);
            }
        }
        void flush() override { owner_.step(); }
        void resize(std::uint64_t size) override
        {
            owner_.step();
            bytes_->resize(static_cast<std::size_t>(size));
        }

    private:
        MemoryFiles& owner_;
        std::wstring path_;
        std::shared_ptr<std::string> bytes_;
    };
    std::set<std::wstring> opened_;
};

} // namespace velora

// Gives a fuzz target every file of a folder, once: the kept inputs as a regression test.
#include <dirent.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::string> filesIn(const std::string& folder)
{
    std::vector<std::string> files;
    DIR* dir = opendir(folder.c_str());
    if (!dir)
        return files;
    while (const dirent* entry = readdir(dir)) {
        const std::string name = entry->d_name;
        if (name.front() != '.')
            files.push_back(folder + "/" + name);
    }
    closedir(dir);
    std::sort(files.begin(), files.end());
    return files;
}

bool readWhole(const std::string& path, std::vector<std::uint8_t>& bytes)
{
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file)
        return false;
    bytes.clear();
    std::uint8_t block[65536];
    std::size_t count = 0;
    while ((count = std::fread(block, 1, sizeof block, file)) > 0)
        bytes.insert(bytes.end(), block, block + count);
    const bool good = !std::ferror(file);
    std::fclose(file);
    return good;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s CORPUS-FOLDER\n", argv[0]);
        return 2;
    }
    const std::vector<std::string> files = filesIn(argv[1]);
    if (files.empty()) {
        std::fprintf(stderr, "no inputs in %s: nothing was tested\n", argv[1]);
        return 1;
    }
    std::vector<std::uint8_t> bytes;
    LLVMFuzzerTestOneInput(bytes.data(), 0);
    for (const std::string& path : files) {
        if (!readWhole(path, bytes)) {
            std::fprintf(stderr, "cannot read %s\n", path.c_str());
            return 1;
        }
        // A copy of its exact size, so that the sanitizer sees the first byte read beyond it.
        const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
        std::fprintf(stderr, "%s\n", path.c_str());
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::printf("%zu inputs\n", files.size());
    return 0;
}

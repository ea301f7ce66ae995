// Replays saved fuzz inputs through a fuzz target without libFuzzer, so that every normal build
// (and its sanitizers) runs the committed corpus as a test. Arguments are files or folders; a
// folder's files run in name order. Fails when no input was found, so that a lost corpus is
// noticed.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

bool ReadAll(const std::filesystem::path& path, std::vector<uint8_t>& bytes) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return false;
    }
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !in.bad();
}

// Every regular file named by the arguments, folders expanded one level, sorted within a folder.
std::vector<std::filesystem::path> Inputs(int argc, char** argv) {
    std::vector<std::filesystem::path> inputs;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path arg(argv[i]);
        std::error_code error;
        if (std::filesystem::is_directory(arg, error)) {
            std::vector<std::filesystem::path> files;
            for (const auto& entry : std::filesystem::directory_iterator(arg, error)) {
                if (entry.is_regular_file(error)) {
                    files.push_back(entry.path());
                }
            }
            std::sort(files.begin(), files.end());
            inputs.insert(inputs.end(), files.begin(), files.end());
        } else {
            inputs.push_back(arg);
        }
    }
    return inputs;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::filesystem::path> inputs = Inputs(argc, argv);
    if (inputs.empty()) {
        std::fprintf(stderr, "usage: %s CORPUS_DIR|FILE...: no inputs found\n", argv[0]);
        return 2;
    }
    int failed = 0;
    std::vector<uint8_t> bytes;
    for (const auto& input : inputs) {
        if (!ReadAll(input, bytes)) {
            std::fprintf(stderr, "cannot read %s\n", input.c_str());
            ++failed;
            continue;
        }
        // Named first, so that a crash report says which input caused it.
        std::fprintf(stderr, "replay %s (%zu bytes)\n", input.c_str(), bytes.size());
        // A heap copy of exactly the input's size, so that AddressSanitizer sees a read past it.
        std::unique_ptr<uint8_t[]> exact(new uint8_t[bytes.size()]);
        std::copy(bytes.begin(), bytes.end(), exact.get());
        LLVMFuzzerTestOneInput(exact.get(), bytes.size());
    }
    std::fprintf(stderr, "%zu inputs replayed, %d unreadable\n", inputs.size(), failed);
    return failed == 0 ? 0 : 1;
}

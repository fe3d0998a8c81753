// Gives a fuzzer every file of a folder once: <program> <corpus folder>. Fails when there is none.
#include "support/TestData.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <set>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::size_t Replay(const std::filesystem::path& folder) {
    const std::filesystem::directory_iterator entries(folder);
    const std::set<std::filesystem::path> files(begin(entries), end(entries));
    for (const auto& file : files) {
        // The last name is the one that failed.
        std::cout << file.filename().string() << std::endl;
        const std::string input = vek::test::ReadText(file.string());
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
    return files.size();
}

} // namespace

int main(int count, char** arguments) {
    try {
        if (count == 2 && Replay(arguments[1]) > 0)
            return EXIT_SUCCESS;
        std::cerr << "no inputs\n";
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
    }
    return EXIT_FAILURE;
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a fuzz target without a fuzzer: every file of its corpus, then a fixed number of changed copies from a fixed
// seed.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {
using Bytes = std::vector<uint8_t>;

constexpr unsigned seed = 1;

std::vector<Bytes> corpusIn(const char *folder)
{
    // Sorted, so that the same seed changes the same inputs on every file system.
    const std::filesystem::directory_iterator entries(folder);
    std::set<std::filesystem::path> paths(begin(entries), end(entries));
    std::vector<Bytes> corpus;
    for (const std::filesystem::path &path : paths) {
        std::ifstream file(path, std::ios::binary);
        corpus.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return corpus;
}

/// One change of the kinds that find faults in a scanner: a byte set, a stretch left out, doubled, or taken from
/// another input.
void change(Bytes &bytes, const Bytes &other, std::mt19937 &engine)
{
    const auto below = [&engine](size_t count) { return std::ptrdiff_t(engine() % count); };
    const std::ptrdiff_t from = below(bytes.size());
    const std::ptrdiff_t length = 1 + below(bytes.size() - size_t(from));
    const std::ptrdiff_t otherFrom = below(other.size());
    const std::ptrdiff_t otherLength = 1 + below(other.size() - size_t(otherFrom));
    const Bytes stretch(bytes.begin() + from, bytes.begin() + from + length);
    switch (engine() % 4) {
    case 0:
        bytes[size_t(from)] = uint8_t(engine());
        break;
    case 1:
        bytes.erase(bytes.begin() + from, bytes.begin() + from + length);
        break;
    case 2:
        bytes.insert(bytes.begin() + from, stretch.begin(), stretch.end());
        break;
    case 3:
        bytes.insert(bytes.begin() + from, other.begin() + otherFrom, other.begin() + otherFrom + otherLength);
        break;
    }
}
}

int main(int argc, char *argv[])
{
    const std::vector<Bytes> corpus = argc == 3 ? corpusIn(argv[1]) : std::vector<Bytes>();
    if (corpus.empty()) {
        std::fputs("usage: fuzz_TARGET CORPUS COPIES, where the folder CORPUS is not empty\n", stderr);
        return 2;
    }
    for (const Bytes &bytes : corpus)
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    std::mt19937 engine(seed);
    for (long copies = std::strtol(argv[2], nullptr, 10); copies > 0; --copies) {
        Bytes bytes = corpus[engine() % corpus.size()];
        for (auto changes = 1 + engine() % 8; changes > 0 && !bytes.empty(); --changes)
            change(bytes, corpus[engine() % corpus.size()], engine);
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    return 0;
}

// Runs a fuzz target without libFuzzer: a fixed number of rounds over inputs made from the target's seeds.
//
//   fuzz_NAME_loop [ROUNDS [SEED [FILE]]]
//
// Round n of a seed is always the same input. With FILE, each input is written there before it runs, so
// that after a crash FILE holds the input that caused it.
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include "FuzzTarget.h"

namespace {

constexpr size_t kMaxInputBytes = 32'768;

using Random = std::mt19937_64;

size_t Below(Random& random, size_t limit) {
    return limit == 0 ? 0 : size_t(random() % limit);
}

std::string SliceOf(Random& random, const std::string& text) {
    const size_t begin = Below(random, text.size());
    return text.substr(begin, 1 + Below(random, 40));
}

void MutateOnce(Random& random, std::string& input) {
    // Texts that parsers trip over: limits, signs, halves of pairs, ends.
    static const std::string zero(1, '\0'), ones(4, '\xff'), longName(300, 'a');
    static const std::vector<std::string> tokens = {"\n",    "\r",   "\r\n",       "\"",
                                                    "/*",    "*/",   "//",         "#include \"",
                                                    "(",     ")",    ":",          ",",
                                                    "{",     "}",    "[",          "]",
                                                    "-1",    "0",    "2147483648", "99999999999999999999",
                                                    "1e400", "null", "\\u0000",    "\\ud800",
                                                    zero,    ones,   longName};
    const size_t at = Below(random, input.size() + 1);
    switch (random() % 7) {
        case 0:
            if (at < input.size()) input[at] = static_cast<char>(random());
            break;
        case 1:
            if (at < input.size()) input[at] = static_cast<char>(input[at] ^ (1 << (random() % 8)));
            break;
        case 2:
            input.insert(at, tokens[Below(random, tokens.size())]);
            break;
        case 3:
            input.insert(at, SliceOf(random, FuzzSeeds()[Below(random, FuzzSeeds().size())]));
            break;
        case 4:
            input.insert(at, SliceOf(random, input));
            break;
        case 5:
            input.erase(at, 1 + Below(random, 30));
            break;
        default:
            if (random() % 8 == 0) input.resize(at);
            break;
    }
    if (input.size() > kMaxInputBytes) input.resize(kMaxInputBytes);
}

void Run(const std::string& input, const char* file) {
    if (file) std::ofstream(file, std::ios::binary | std::ios::trunc) << input;
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int argc, char** argv) {
    const uint64_t rounds = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 10'000;
    const uint64_t seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    const char* const file = argc > 3 ? argv[3] : nullptr;
    std::cout << "seed " << seed << ", " << rounds << " rounds" << std::endl;

    Run(std::string(), file);
    for (const std::string& input : FuzzSeeds())
        Run(input, file);
    for (uint64_t round = 0; round < rounds; ++round) {
        Random random(seed * 0x9e3779b97f4a7c15ULL + round);
        std::string input = FuzzSeeds()[Below(random, FuzzSeeds().size())];
        for (size_t i = 1 + Below(random, 12); i > 0; --i)
            MutateOnce(random, input);
        Run(input, file);
    }
    std::cout << "done" << std::endl;
    return 0;
}

/// Runs a fuzz target without a fuzzer: each file of the corpus as it is, then changed copies of
/// them, always the same sequence, for RIGSTAGE_FUZZ_SECONDS (default 1).
///
///     fuzz_xml FOLDER_OR_FILE...
///
/// An input that ends the program is left in crash-input.bin in the working folder; given as the
/// only argument it runs again, by itself with RIGSTAGE_FUZZ_SECONDS=0.
#include "tests/fuzz/fuzz.h"
#include "util/file.h"
#include "util/random.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

using tvw::Random;

constexpr std::size_t kMaxInput = 64 * 1024; ///< [bytes]

std::string currentInput;

/// Runs in a signal handler or while a sanitizer ends the program: plain system calls only.
void keepInput()
{
    const int fd = ::open("crash-input.bin", O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0 || ::write(fd, currentInput.data(), currentInput.size()) < 0) {
        constexpr char kLost[] = "the input could not be kept\n";
        [[maybe_unused]] const ssize_t told = ::write(STDERR_FILENO, kLost, sizeof kLost - 1);
    }
    ::close(fd);
}

void keepInputAndEnd(int signal)
{
    keepInput();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void keepInputOfCrashes()
{
    std::signal(SIGABRT, keepInputAndEnd);
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(keepInput); // it reports the other signals itself
        return;
    }
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) {
        std::signal(signal, keepInputAndEnd);
    }
}

void run(const std::string& input)
{
    currentInput = input;
    // A block of exactly this size, so that a sanitizer sees a read one byte behind it.
    std::vector<std::uint8_t> bytes(input.begin(), input.end());
    bytes.shrink_to_fit();
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

/// The files below the arguments, in the order of their names; exits where one cannot be read.
std::vector<std::string> readCorpus(int count, char** arguments)
{
    namespace fs = std::filesystem;
    std::vector<fs::path> files;
    for (int i = 1; i < count; ++i) {
        if (!fs::is_directory(arguments[i])) {
            files.emplace_back(arguments[i]);
            continue;
        }
        for (const fs::directory_entry& entry : fs::directory_iterator(arguments[i])) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    std::vector<std::string> corpus;
    for (const fs::path& file : files) {
        tvw::Result<std::string> bytes = tvw::readFile(file.string());
        if (!bytes) {
            std::fprintf(stderr, "%s\n", bytes.reason().c_str());
            std::exit(2);
        }
        corpus.push_back(*std::move(bytes));
    }
    return corpus;
}

std::size_t below(Random& random, std::size_t limit)
{
    return limit == 0 ? 0 : random.next() % limit;
}

/// Counts and sizes at which parsers break.
std::uint32_t suspiciousNumber(Random& random, std::size_t size)
{
    const std::uint32_t numbers[] = {0,          1,
                                     0x7fffffff, 0x80000000,
                                     0xffffffff, 256,
                                     257,        static_cast<std::uint32_t>(size),
                                     0x10000000, static_cast<std::uint32_t>(below(random, 64))};
    return numbers[below(random, std::size(numbers))];
}

void overwriteNumber(Random& random, std::string& input)
{
    const std::uint32_t number = suspiciousNumber(random, input.size());
    if (input.size() >= sizeof number) {
        std::memcpy(input.data() + below(random, input.size() - sizeof number + 1), &number,
                    sizeof number);
    }
}

/// A piece of any of the inputs, this one included.
std::string anyPiece(Random& random, const std::vector<std::string>& corpus)
{
    const std::string& from = corpus[below(random, corpus.size())];
    const std::size_t begin = below(random, from.size() + 1);
    return from.substr(begin, below(random, from.size() - begin + 1));
}

void changeOnce(Random& random, const std::vector<std::string>& corpus, std::string& input)
{
    const std::size_t at = below(random, input.size() + 1);
    switch (below(random, 7)) {
    case 0:
        if (at < input.size()) {
            input[at] = static_cast<char>(input[at] ^ (1 << below(random, 8)));
        }
        break;
    case 1:
        if (at < input.size()) {
            input[at] = static_cast<char>(random.next());
        }
        break;
    case 2:
        overwriteNumber(random, input);
        break;
    case 3:
        input.erase(at, below(random, 16) + 1);
        break;
    case 4:
        input.resize(at);
        break;
    case 5:
        input.insert(at, input.substr(below(random, input.size() + 1), below(random, 64)));
        break;
    default:
        input.insert(at, anyPiece(random, corpus));
    }
    input.resize(std::min(input.size(), kMaxInput));
}

double secondsToRun()
{
    const char* const text = std::getenv("RIGSTAGE_FUZZ_SECONDS");
    return text == nullptr ? 1.0 : std::atof(text);
}

/// Answers the number of inputs.
long runChangedInputs(const std::vector<std::string>& corpus, double seconds)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    Random random(1);
    long count = 0;
    for (; Clock::now() < end; ++count) {
        std::string input = corpus[below(random, corpus.size())];
        for (std::size_t changes = 1 + below(random, 4); changes > 0; --changes) {
            changeOnce(random, corpus, input);
        }
        run(input);
    }
    return count;
}

} // namespace

int main(int count, char** arguments)
{
    const std::vector<std::string> corpus = readCorpus(count, arguments);
    if (corpus.empty()) {
        std::fprintf(stderr, "usage: %s FOLDER_OR_FILE...: there is no input\n", arguments[0]);
        return 2;
    }
    keepInputOfCrashes();
    for (const std::string& input : corpus) {
        run(input);
    }
    const long changed = runChangedInputs(corpus, secondsToRun());
    std::printf("%zu inputs, %ld changed ones: sound\n", corpus.size(), changed);
    return 0;
}

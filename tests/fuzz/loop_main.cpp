/// Drives a fuzz target without libFuzzer: fuzz_x FILE-OR-FOLDER...
///
/// Runs each file once, then mutations of them for RIGSTAGE_FUZZ_SECONDS seconds (default 1). The
/// mutations come from one fixed sequence: a failure comes again in every run that gets as far. On
/// a crash the input is in the file that the last line names.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
/// Of the sanitizers' runtime; null in a build without them.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kMaxInput = 1 << 16;

// What the handler of a crash writes; set before each run.
const Bytes* current = nullptr;
char crashFile[64];

extern "C" void keepInput()
{
    const int fd = ::open(crashFile, O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const char message[] = "The input that failed is in ";
    if (fd < 0 || ::write(fd, current->data(), current->size()) < 0 ||
        ::write(2, message, sizeof message - 1) < 0 ||
        ::write(2, crashFile, std::strlen(crashFile)) < 0 || ::write(2, "\n", 1) < 0) {
        ::_exit(2);
    }
}

extern "C" void keepInputAndEnd(int signal)
{
    keepInput();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

/// The sanitizers report a fault and exit; they also know more to say of a bad access than its
/// signal does.
void keepInputOfCrashes()
{
    std::signal(SIGABRT, keepInputAndEnd);
    if (__sanitizer_set_death_callback != nullptr) {
        __sanitizer_set_death_callback(keepInput);
        return;
    }
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) {
        std::signal(signal, keepInputAndEnd);
    }
}

void run(const Bytes& input)
{
    // A copy of exactly its size, so that a sanitizer sees a read behind its end.
    const Bytes exact(input.begin(), input.end());
    current = &exact;
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
}

std::vector<Bytes> corpusOf(int argc, char** argv)
{
    std::vector<std::filesystem::path> files;
    for (int i = 1; i < argc; ++i) {
        if (std::filesystem::is_directory(argv[i])) {
            for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
                files.push_back(entry.path());
            }
        } else {
            files.emplace_back(argv[i]);
        }
    }
    std::sort(files.begin(), files.end()); // the order of a folder is not the same everywhere
    std::vector<Bytes> corpus;
    for (const std::filesystem::path& file : files) {
        std::ifstream in(file, std::ios::binary);
        corpus.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    return corpus;
}

class Mutator
{
public:
    explicit Mutator(const std::vector<Bytes>& corpus) : corpus_(corpus) {}

    Bytes next()
    {
        Bytes bytes = any();
        for (std::size_t changes = 1 + below(4); changes > 0; --changes) {
            change(bytes);
        }
        bytes.resize(std::min(bytes.size(), kMaxInput));
        return bytes;
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }
    const Bytes& any() { return corpus_[below(corpus_.size())]; }

    void change(Bytes& bytes)
    {
        const std::size_t at = below(bytes.size() + 1);
        const std::size_t length = std::min<std::size_t>(below(16), bytes.size() - at);
        const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        switch (below(7)) {
        case 0: // another bit
            flip(bytes, at);
            break;
        case 1: // another byte, put in
            bytes.insert(place, static_cast<std::uint8_t>(random_()));
            break;
        case 2: // some bytes less
            bytes.erase(place, place + static_cast<std::ptrdiff_t>(length));
            break;
        case 3: // the rest less
            bytes.resize(at);
            break;
        case 4: // the same bytes again
        {
            const Bytes again(place, place + static_cast<std::ptrdiff_t>(length));
            bytes.insert(place, again.begin(), again.end());
            break;
        }
        case 5: // the end of another one
        {
            const Bytes& other = any();
            bytes.resize(at);
            const std::size_t from = below(other.size() + 1);
            bytes.insert(bytes.end(), other.begin() + static_cast<std::ptrdiff_t>(from),
                         other.end());
            break;
        }
        default:
            putCount(bytes, at);
        }
    }

    void flip(Bytes& bytes, std::size_t at)
    {
        if (at < bytes.size()) {
            bytes[at] = static_cast<std::uint8_t>(bytes[at] ^ (1u << below(8)));
        }
    }

    /// A number that a careless reader of counts stumbles over.
    void putCount(Bytes& bytes, std::size_t at)
    {
        constexpr std::uint32_t kCounts[] = {0,          1,          0x7f,       0xff,
                                             0x100,      0x101,      0xffff,     0x10000000,
                                             0x10000001, 0x7fffffff, 0x80000000, 0xffffffff};
        const std::uint32_t count = kCounts[below(std::size(kCounts))];
        for (std::size_t i = 0; i < 4 && at + i < bytes.size(); ++i) {
            bytes[at + i] = static_cast<std::uint8_t>(count >> 8 * i);
        }
    }

    const std::vector<Bytes>& corpus_;
    std::minstd_rand random_{1};
};

std::chrono::duration<double> timeToSpend()
{
    const char* const text = std::getenv("RIGSTAGE_FUZZ_SECONDS");
    return std::chrono::duration<double>(text != nullptr ? std::atof(text) : 1.0);
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<Bytes> corpus = corpusOf(argc, argv);
    if (corpus.empty()) {
        std::fprintf(stderr, "usage: %s FILE-OR-FOLDER... (with at least one file)\n", argv[0]);
        return 2;
    }
    std::snprintf(crashFile, sizeof crashFile, "crash-%d", static_cast<int>(::getpid()));
    keepInputOfCrashes();
    for (const Bytes& input : corpus) {
        run(input);
    }
    Mutator mutator(corpus);
    std::size_t runs = 0;
    const auto end = std::chrono::steady_clock::now() + timeToSpend();
    for (; std::chrono::steady_clock::now() < end; ++runs) {
        run(mutator.next());
    }
    std::printf("%zu files and %zu mutations passed\n", corpus.size(), runs);
    return 0;
}

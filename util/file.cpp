#include "util/file.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tvw {

namespace {

std::string because(const char* action, const std::string& path, int error)
{
    return std::string("cannot ") + action + " " + path + ": " + std::strerror(error);
}

/// An open file of the system; closes itself.
class Descriptor
{
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }

    [[nodiscard]] int get() const { return fd_; }
    [[nodiscard]] bool isOpen() const { return fd_ >= 0; }
    /// Closes now; false where the system lost bytes that it had taken.
    [[nodiscard]] bool close() { return ::close(std::exchange(fd_, -1)) == 0; }

private:
    int fd_;
};

/// Appends all that can still be read; 0, or the system's error.
template <class Bytes>
int readAll(int fd, Bytes& out)
{
    struct stat info
    {
    };
    if (::fstat(fd, &info) == 0 && S_ISREG(info.st_mode)) {
        out.resize(static_cast<std::size_t>(info.st_size));
    }
    // A file may grow meanwhile, and some (pipes, /proc) do not say their size.
    constexpr std::size_t kMore = 4096;
    std::size_t filled = 0;
    for (;;) {
        if (filled == out.size()) {
            out.resize(filled + filled / 2 + kMore);
        }
        const ssize_t got = ::read(fd, out.data() + filled, out.size() - filled);
        if (got < 0 && errno != EINTR) {
            return errno;
        }
        if (got == 0) {
            out.resize(filled);
            return 0;
        }
        filled += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
}

template <class Bytes>
Status readWhole(const std::string& path, Bytes& out)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) {
        return Status::failure(because("open", path, errno));
    }
    if (const int error = readAll(file.get(), out); error != 0) {
        return Status::failure(because("read", path, error));
    }
    return {};
}

[[nodiscard]] bool writeAll(int fd, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t done = ::write(fd, bytes.data(), bytes.size());
        if (done < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(done > 0 ? static_cast<std::size_t>(done) : 0);
    }
    return true;
}

/// What the path points at where it is a symbolic link, else the path.
std::string targetOf(const std::string& path)
{
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr),
                                                               &std::free);
    return resolved ? resolved.get() : path;
}

/// Makes a new file beside `target`, with the permissions that the process gives any new file.
/// `name` gets its path.
Descriptor createNeighbour(const std::string& target, std::string& name)
{
    static std::atomic<unsigned> counter{0};
    for (;;) {
        name = target + "." + std::to_string(::getpid()) + "-" + std::to_string(counter++) + ".tmp";
        const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST) {
            return Descriptor(fd);
        }
    }
}

/// Gives the open file the permissions of the one that it will replace, if there is one.
[[nodiscard]] bool takePermissions(int fd, const std::string& target)
{
    struct stat info
    {
    };
    return ::stat(target.c_str(), &info) != 0 || ::fchmod(fd, info.st_mode & 07777) == 0;
}

/// Makes the new name of a file outlive a power cut. Some file systems cannot; the file is whole
/// either way.
void syncFolderOf(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const Descriptor file(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (file.isOpen()) {
        ::fsync(file.get());
    }
}

} // namespace

Result<std::string> readFile(const std::string& path)
{
    std::string bytes;
    if (const Status status = readWhole(path, bytes); !status) {
        return Result<std::string>::failure(status.reason());
    }
    return bytes;
}

bool readFile(const std::string& path, std::vector<std::byte>& out)
{
    std::vector<std::byte> bytes;
    if (!readWhole(path, bytes)) {
        return false;
    }
    out = std::move(bytes);
    return true;
}

Status writeFileAtomically(const std::string& path, std::string_view bytes)
{
    const std::string target = targetOf(path);
    std::string temporary;
    Descriptor file = createNeighbour(target, temporary);
    if (!file.isOpen()) {
        return Status::failure(because("write", path, errno));
    }
    const bool replaced = writeAll(file.get(), bytes) && takePermissions(file.get(), target) &&
                          ::fsync(file.get()) == 0 && file.close() &&
                          ::rename(temporary.c_str(), target.c_str()) == 0;
    if (!replaced) {
        const int error = errno;
        ::unlink(temporary.c_str());
        return Status::failure(because("write", path, error));
    }
    syncFolderOf(target);
    return {};
}

} // namespace tvw

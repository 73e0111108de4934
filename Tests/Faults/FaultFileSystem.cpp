// A file system that passes everything through to a folder, writes down each operation, and makes faults on command.
//
//   gaugeline_fault_file_system FOLDER MOUNT_POINT RULES TRACE
//
// RULES is a text file that may be missing and may be replaced at any time, which starts all counts anew. A line reads
//
//   OPERATION PATTERN FIRST LAST ACTION VALUE        write IOT*.tio 3 3 error 5
//
// and hits the FIRST to LAST (0: no end) of the operations on names that match PATTERN. Operations are open, create,
// read, write, close and unlink; with "direct-" before it, only those with O_DIRECT count. Actions:
//
//   error E      fail with this error number instead of doing it
//   short N      read or write no more than N bytes
//   delay MS     do it so much later
//   hang 0       until RULES changes; ends with EINTR when the caller is killed
//   hang 1       until RULES changes; the caller cannot even be killed
//
// TRACE gets the line "OPERATION NAME OFFSET SIZE RESULT FLAGS" at each end of an operation, where RESULT is a number
// of bytes or a negative error number, and "hang NAME 0 0 0 -" at the beginning of a hang.
//
// The page cache is never used (direct_io), so that one transfer of up to 1 MB by the caller is one operation here. The
// kernel itself answers the switching of O_DIRECT on an open file (fcntl F_SETFL) and accepts it, whatever a FUSE file
// system says; all that this one can refuse is an open with O_DIRECT, or the transfers after a switch.

#define FUSE_USE_VERSION 35

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <limits>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <fnmatch.h>
#include <fuse3/fuse.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

struct Operation {
    const char* kind;
    const char* path;
    int flags = O_RDONLY;
    off_t offset = 0;
    std::size_t size = 0;
};

struct Rule {
    std::string operation;
    std::string pattern;
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    std::string action;
    std::int64_t value = 0;
    std::uint64_t seen = 0;

    [[nodiscard]] bool Matches(const Operation& operation_) const {
        const bool isDirect = (operation_.flags & O_DIRECT) != 0;
        return (operation == operation_.kind || (isDirect && operation == std::string("direct-") + operation_.kind)) &&
               ::fnmatch(pattern.c_str(), operation_.path + 1, 0) == 0;
    }
    [[nodiscard]] bool Hits() const { return seen >= first && (last == 0 || seen <= last); }
};

/// The rules in force and the trace. Used by all threads that serve the kernel.
class Faults {
public:
    Faults(std::string folder, std::string rules, const char* trace)
        : m_folder(std::move(folder)), m_rulesPath(std::move(rules)), m_trace(trace, std::ios::app) {}

    [[nodiscard]] std::string Below(const char* path) const { return m_folder + path; }

    /// Does the operation by `work`, which takes the bytes allowed, unless a rule has it otherwise. 0 or more, or a
    /// negative error number.
    template <typename Work>
    int Serve(const Operation& operation, Work work) {
        const Rule rule = Next(operation);
        int result = 0;
        if (rule.action == "delay") {
            std::this_thread::sleep_for(std::chrono::milliseconds(rule.value));
        } else if (rule.action == "hang") {
            result = Hang(operation, rule.value != 0);
        } else if (rule.action == "error") {
            result = -static_cast<int>(rule.value);
        }
        if (result == 0) {
            const auto allowed = rule.action == "short" ? static_cast<std::size_t>(rule.value) : kNoLimit;
            const auto done = static_cast<std::int64_t>(work(std::min(allowed, operation.size)));
            result = done < 0 ? -errno : static_cast<int>(done);
        }
        Trace(operation, result);
        return result;
    }

private:
    /// Counts the operation for all rules; answers a copy of the first that hits, or one without an action.
    Rule Next(const Operation& operation) {
        const std::scoped_lock lock(m_lock);
        ReloadLocked();
        Rule hit;
        for (Rule& rule : m_rules) {
            if (rule.Matches(operation)) {
                ++rule.seen;
                if (rule.Hits() && hit.action.empty()) {
                    hit = rule;
                }
            }
        }
        return hit;
    }

    /// A new file has another inode or time.
    void ReloadLocked() {
        struct stat status {};
        static_cast<void>(::stat(m_rulesPath.c_str(), &status));
        const std::array<std::int64_t, 3> state{static_cast<std::int64_t>(status.st_ino), status.st_mtim.tv_sec,
                                                status.st_mtim.tv_nsec};
        if (state == m_rulesState) {
            return;
        }
        m_rulesState = state;
        ++m_generation;
        m_rules.clear();
        std::ifstream file(m_rulesPath);
        for (std::string line; std::getline(file, line);) {
            Rule rule;
            if (std::istringstream(line) >> rule.operation >> rule.pattern >> rule.first >> rule.last >> rule.action >>
                rule.value) {
                m_rules.push_back(std::move(rule));
            }
        }
    }

    std::uint64_t Generation() {
        const std::scoped_lock lock(m_lock);
        ReloadLocked();
        return m_generation;
    }

    int Hang(const Operation& operation, bool isDeaf) {
        const std::uint64_t generation = Generation();
        Trace({.kind = "hang", .path = operation.path}, 0);
        while (Generation() == generation) {
            if (!isDeaf && ::fuse_interrupted() != 0) {
                return -EINTR;
            }
            std::this_thread::sleep_for(10ms);
        }
        return 0;
    }

    void Trace(const Operation& operation, int result) {
        const bool isReadOnly = (operation.flags & O_ACCMODE) == O_RDONLY;
        const std::scoped_lock lock(m_lock);
        m_trace << operation.kind << ' ' << operation.path + 1 << ' ' << operation.offset << ' ' << operation.size
                << ' ' << result << ' ' << (isReadOnly ? "ro" : "rw")
                << ((operation.flags & O_DIRECT) != 0 ? "+direct" : "") << std::endl;
    }

    std::string m_folder;
    std::string m_rulesPath;
    std::mutex m_lock;
    std::ofstream m_trace;
    std::vector<Rule> m_rules;
    std::array<std::int64_t, 3> m_rulesState{};
    std::uint64_t m_generation = 0;
};

Faults& Self() {
    return *static_cast<Faults*>(::fuse_get_context()->private_data);
}

int Answer(int result) {
    return result < 0 ? -errno : 0;
}

int FileOf(const fuse_file_info* info) {
    return static_cast<int>(info->fh);
}

void* Begin(fuse_conn_info* /*connection*/, fuse_config* config) {
    config->direct_io = 1;
    config->hard_remove = 1;
    config->entry_timeout = config->attr_timeout = config->negative_timeout = 0;
    return ::fuse_get_context()->private_data;
}

int GetAttributes(const char* path, struct stat* status, fuse_file_info* info) {
    return Answer(info != nullptr ? ::fstat(FileOf(info), status) : ::lstat(Self().Below(path).c_str(), status));
}

/// The folder below gets no O_DIRECT: what it makes of it is not the question.
int OpenBelow(const Operation& operation, int extraFlags, mode_t mode, fuse_file_info* info) {
    const int result = Self().Serve(operation, [&](std::size_t /*allowed*/) {
        const int flags = (operation.flags & ~O_DIRECT) | extraFlags | O_CLOEXEC;
        const int file = ::open(Self().Below(operation.path).c_str(), flags, mode);
        info->fh = static_cast<std::uint64_t>(file);
        return file;
    });
    return std::min(result, 0);
}

int Open(const char* path, fuse_file_info* info) {
    return OpenBelow({.kind = "open", .path = path, .flags = info->flags}, 0, 0, info);
}

int Create(const char* path, mode_t mode, fuse_file_info* info) {
    return OpenBelow({.kind = "create", .path = path, .flags = info->flags}, O_CREAT, mode, info);
}

int Read(const char* path, char* buffer, std::size_t size, off_t offset, fuse_file_info* info) {
    const Operation operation{.kind = "read", .path = path, .flags = info->flags, .offset = offset, .size = size};
    return Self().Serve(operation, [&](std::size_t allowed) { return ::pread(FileOf(info), buffer, allowed, offset); });
}

int Write(const char* path, const char* buffer, std::size_t size, off_t offset, fuse_file_info* info) {
    const Operation operation{.kind = "write", .path = path, .flags = info->flags, .offset = offset, .size = size};
    return Self().Serve(operation,
                        [&](std::size_t allowed) { return ::pwrite(FileOf(info), buffer, allowed, offset); });
}

/// What close(2) answers; the release that follows has no one to answer to.
int Flush(const char* path, fuse_file_info* info) {
    return Self().Serve({.kind = "close", .path = path, .flags = info->flags},
                        [](std::size_t /*allowed*/) { return 0; });
}

int Release(const char* /*path*/, fuse_file_info* info) {
    return Answer(::close(FileOf(info)));
}

int Unlink(const char* path) {
    return Self().Serve({.kind = "unlink", .path = path},
                        [&](std::size_t /*allowed*/) { return ::unlink(Self().Below(path).c_str()); });
}

int Truncate(const char* path, off_t size, fuse_file_info* info) {
    return Answer(info != nullptr ? ::ftruncate(FileOf(info), size) : ::truncate(Self().Below(path).c_str(), size));
}

int Space(const char* path, struct statvfs* space) {
    return Answer(::statvfs(Self().Below(path).c_str(), space));
}

fuse_operations Operations() {
    fuse_operations operations{};
    operations.init = Begin;
    operations.getattr = GetAttributes;
    operations.open = Open;
    operations.create = Create;
    operations.read = Read;
    operations.write = Write;
    operations.flush = Flush;
    operations.release = Release;
    operations.unlink = Unlink;
    operations.truncate = Truncate;
    operations.statfs = Space;
    return operations;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 5) {
        std::fputs("usage: gaugeline_fault_file_system FOLDER MOUNT_POINT RULES TRACE\n", stderr);
        return 2;
    }
    Faults faults(argv[1], argv[3], argv[4]);
    // A hung operation occupies a thread of the loop; the others go on serving.
    std::array<std::string, 5> words{argv[0], argv[2], "-f", "-o", "fsname=gaugeline_faults"};
    std::array<char*, 5> arguments{};
    std::transform(words.begin(), words.end(), arguments.begin(), [](std::string& word) { return word.data(); });
    const fuse_operations operations = Operations();
    return ::fuse_main(static_cast<int>(arguments.size()), arguments.data(), &operations, &faults);
}

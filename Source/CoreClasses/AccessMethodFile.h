#pragma once

#include "Platform/UncachedFile.h"
#include "SupportingClasses/CString.h"

#include <cstddef>
#include <cstdint>
#include <limits>

class COutputMgr;
class TransferBuffer;

enum class Direction { Read, Write };

/// How one transfer ended, as the access method judges it.
struct TransferOutcome {
    enum class Kind {
        Completed,
        EndOfFile,  ///< not counted; the pass ends
        Failed      ///< counted as an error; the pass ends
    };

    Kind kind = Kind::Completed;
    std::uint64_t counted = 0;  ///< bytes for the byte total
    std::uint64_t advance = 0;  ///< bytes by which the offset in the file moves on
    std::int64_t reported = 0;  ///< the number that the line of an end, a failure or an inexact read shows
    bool inexact = false;       ///< a completed read of another size than asked for
};

/// The one open file of a phase, as an access method handles it. The engine's loop drives it on the worker's thread:
///
///     Open --true--> LogOpened -> (Transfer -> Judge -> log lines) ... -> Close -> CacheReport
///
/// `Open` may be called again after `Close` and after it answered false. The log lines here are those that methods
/// share; a method whose words differ overrides them.
class AccessMethodFile {
public:
    static constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

    /// `output` may be null: nothing is logged then.
    AccessMethodFile(Direction direction, COutputMgr* output, int readerNumber);
    virtual ~AccessMethodFile() = default;
    AccessMethodFile(const AccessMethodFile&) = delete;
    AccessMethodFile& operator=(const AccessMethodFile&) = delete;

    /// Sets the bytes that a phase's transfers will write, and has the system supply the memory before any transfer is
    /// timed.
    virtual void PrepareBuffer(TransferBuffer& buffer);

    /// Opens the file at its start; logs why not and answers false otherwise.
    [[nodiscard]] virtual bool Open(const CString& name) = 0;

    /// The offset at which a pass over the open file ends.
    [[nodiscard]] virtual std::uint64_t Limit() const = 0;

    /// Moves `size` bytes between buffer and file. The engine times this call and nothing else.
    virtual void Transfer(std::byte* buffer, std::size_t size) = 0;

    /// Judges the transfer just made. Logs nothing: the caller holds the worker's lock.
    [[nodiscard]] virtual TransferOutcome Judge() const = 0;

    virtual void Close() = 0;

    /// After `Close`: how the transfers met the file cache.
    [[nodiscard]] virtual FileCacheReport CacheReport() const { return {}; }

    virtual void LogOpened(const CString& name) const;
    virtual void LogEndOfFile(const CString& name, const TransferOutcome& outcome) const;
    virtual void LogFailure(const CString& name, const TransferOutcome& outcome) const;
    virtual void LogInexactRead(std::uint32_t expected, const TransferOutcome& outcome) const;
    virtual void LogOverThreshold(int milliseconds) const;
    virtual void LogThresholdMaximum() const;

protected:
    [[nodiscard]] bool IsReading() const { return m_direction == Direction::Read; }
    [[nodiscard]] COutputMgr* Output() const { return m_output; }
    [[nodiscard]] int ReaderNumber() const { return m_readerNumber; }

private:
    Direction m_direction;
    COutputMgr* m_output;
    int m_readerNumber;
};

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// A histogram of transfer times at constant cost: every octave of microseconds is divided into 128 equal buckets, so
/// that a value read from it is less than 1/256 (0.4 %) off. Times of 2^40 us (12 days) and more share the last bucket.
class TransferTimeHistogram {
public:
    void Add(std::uint64_t microseconds);

    [[nodiscard]] std::uint64_t Count() const { return m_count; }
    /// The longest time added, exact.
    [[nodiscard]] std::uint64_t Longest() const { return m_longest; }

    /// The time that the share `fraction` (0 to 1) of all times do not exceed, in microseconds: the middle of the
    /// bucket that holds the time of that rank (nearest-rank definition), never more than the longest. 0 when empty.
    [[nodiscard]] std::uint64_t Percentile(double fraction) const;

private:
    static constexpr unsigned kSubBucketBits = 7;
    static constexpr unsigned kLargestExponent = 39;
    static constexpr std::size_t kSubBuckets = std::size_t{1} << kSubBucketBits;
    static constexpr std::size_t kBuckets = (kLargestExponent - kSubBucketBits + 2) * kSubBuckets;

    [[nodiscard]] static std::size_t BucketOf(std::uint64_t microseconds);
    [[nodiscard]] static std::uint64_t MiddleOf(std::size_t bucket);

    std::array<std::uint64_t, kBuckets> m_buckets{};
    std::uint64_t m_count = 0;
    std::uint64_t m_longest = 0;
};

/// Whether the transfers of a paced test came in time for a player that takes one each interval. A transfer is late
/// when it lasts longer than the pacing interval.
struct DeadlineStatistics {
    /// Adds a transfer in the order of its making.
    void Add(std::uint64_t durationUS, std::uint64_t intervalUS);
    /// A new phase begins with an empty backlog and no run of late transfers.
    void BeginPhase();

    std::uint64_t late = 0;
    std::uint64_t longestRun = 0;        ///< of late transfers in a row
    std::uint64_t worstLatenessUS = 0;   ///< beyond the interval
    std::uint64_t largestBacklogUS = 0;  ///< of b = max(0, b + duration - interval): what a player must have buffered
    std::uint64_t currentRun = 0;
    std::uint64_t currentBacklogUS = 0;
};

/// What one direction of a test did, exact where `IOTestResults` has whole seconds and whole milliseconds. The times
/// and the deadlines take in every transfer that was completed or failed, not the reading that only finds the file's
/// end.
struct TransferStatistics {
    std::uint64_t transfers = 0;  ///< completed
    std::uint64_t bytes = 0;
    std::uint64_t errors = 0;
    std::uint64_t phaseUS =
        0;  ///< time in phases of this direction, the running one included up to the moment of the copy
    TransferTimeHistogram times;
    DeadlineStatistics deadlines;

    /// Bytes by phase time in KB/s; 0 before any time has passed.
    [[nodiscard]] double AverageKBps() const;
};

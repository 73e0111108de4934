#include "CoreClasses/TransferStatistics.h"

#include "SupportingClasses/IOTesterConsts.h"

#include <algorithm>
#include <bit>
#include <cmath>

// Bucket layout: times below 128 us have a bucket each. A time of 2^e to 2^(e+1) - 1 us, e >= 7, lies in block e - 6 of
// 128 buckets; the seven bits below its highest one choose the bucket.

std::size_t TransferTimeHistogram::BucketOf(std::uint64_t microseconds) {
    if (microseconds < kSubBuckets) {
        return static_cast<std::size_t>(microseconds);
    }
    const auto exponent = static_cast<unsigned>(std::bit_width(microseconds)) - 1;
    if (exponent > kLargestExponent) {
        return kBuckets - 1;
    }
    const std::uint64_t subBucket = (microseconds >> (exponent - kSubBucketBits)) - kSubBuckets;
    return (exponent - kSubBucketBits + 1) * kSubBuckets + static_cast<std::size_t>(subBucket);
}

std::uint64_t TransferTimeHistogram::MiddleOf(std::size_t bucket) {
    if (bucket < kSubBuckets) {
        return bucket;
    }
    const std::size_t block = bucket / kSubBuckets - 1;
    const std::uint64_t width = std::uint64_t{1} << block;
    return (kSubBuckets + bucket % kSubBuckets) * width + width / 2;
}

void TransferTimeHistogram::Add(std::uint64_t microseconds) {
    ++m_buckets[BucketOf(microseconds)];
    ++m_count;
    m_longest = std::max(m_longest, microseconds);
}

std::uint64_t TransferTimeHistogram::Percentile(double fraction) const {
    if (m_count == 0) {
        return 0;
    }
    const double exactRank = std::ceil(fraction * static_cast<double>(m_count));
    const std::uint64_t rank = std::clamp<std::uint64_t>(static_cast<std::uint64_t>(exactRank), 1, m_count);
    if (rank == m_count) {
        return m_longest;
    }
    std::uint64_t seen = 0;
    for (std::size_t bucket = 0; bucket < kBuckets; ++bucket) {
        seen += m_buckets[bucket];
        if (seen >= rank) {
            return std::min(MiddleOf(bucket), m_longest);
        }
    }
    return m_longest;
}

void DeadlineStatistics::Add(std::uint64_t durationUS, std::uint64_t intervalUS) {
    if (durationUS > intervalUS) {
        const std::uint64_t lateness = durationUS - intervalUS;
        ++late;
        ++currentRun;
        longestRun = std::max(longestRun, currentRun);
        worstLatenessUS = std::max(worstLatenessUS, lateness);
        currentBacklogUS += lateness;
        largestBacklogUS = std::max(largestBacklogUS, currentBacklogUS);
    } else {
        currentRun = 0;
        currentBacklogUS -= std::min(currentBacklogUS, intervalUS - durationUS);
    }
}

void DeadlineStatistics::BeginPhase() {
    currentRun = 0;
    currentBacklogUS = 0;
}

double TransferStatistics::AverageKBps() const {
    if (phaseUS == 0) {
        return 0.0;
    }
    return static_cast<double>(bytes) / kBytesPerKB / (static_cast<double>(phaseUS) / 1e6);
}

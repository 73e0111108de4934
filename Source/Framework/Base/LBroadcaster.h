#pragma once

#include <cstdint>
#include <vector>

class LListener;

using MessageT = std::int32_t;

/// Sends numbered messages to its listeners, in the order in which they were added. Main thread only.
///
/// Either side may go first: a broadcaster that goes leaves its listeners' lists, and the other way round. A listener
/// may add or remove listeners, itself included, while it is being told something.
class LBroadcaster {
public:
    LBroadcaster() = default;
    virtual ~LBroadcaster();
    LBroadcaster(const LBroadcaster&) = delete;
    LBroadcaster& operator=(const LBroadcaster&) = delete;

    /// Adding a listener twice has no effect.
    void AddListener(LListener* listener);
    void RemoveListener(LListener* listener);

    /// `ioParam` is whatever the message's number says; it stays the caller's.
    void BroadcastMessage(MessageT message, void* ioParam = nullptr);

private:
    std::vector<LListener*> m_listeners;
};

#pragma once

#include "Framework/Base/LBroadcaster.h"

#include <vector>

/// Is told the messages of the broadcasters that it was added to. Main thread only.
class LListener {
public:
    LListener() = default;
    virtual ~LListener();
    LListener(const LListener&) = delete;
    LListener& operator=(const LListener&) = delete;

    virtual void ListenToMessage(MessageT message, void* ioParam) = 0;

private:
    friend class LBroadcaster;

    std::vector<LBroadcaster*> m_broadcasters;
};

#include "Framework/Base/LBroadcaster.h"

#include "Framework/Base/LListener.h"

#include <algorithm>

LBroadcaster::~LBroadcaster() {
    for (LListener* listener : m_listeners) {
        std::erase(listener->m_broadcasters, this);
    }
}

LListener::~LListener() {
    const std::vector<LBroadcaster*> broadcasters = m_broadcasters;
    for (LBroadcaster* broadcaster : broadcasters) {
        broadcaster->RemoveListener(this);
    }
}

void LBroadcaster::AddListener(LListener* listener) {
    if (std::find(m_listeners.begin(), m_listeners.end(), listener) == m_listeners.end()) {
        m_listeners.push_back(listener);
        listener->m_broadcasters.push_back(this);
    }
}

void LBroadcaster::RemoveListener(LListener* listener) {
    std::erase(m_listeners, listener);
    std::erase(listener->m_broadcasters, this);
}

void LBroadcaster::BroadcastMessage(MessageT message, void* ioParam) {
    // A listener may go while others are told: only those still listening are.
    const std::vector<LListener*> told = m_listeners;
    for (LListener* listener : told) {
        if (std::find(m_listeners.begin(), m_listeners.end(), listener) != m_listeners.end()) {
            listener->ListenToMessage(message, ioParam);
        }
    }
}

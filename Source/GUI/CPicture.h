#pragma once

#include "Framework/UI/LView.h"

/// The activity lamp. Every draw flips it, from lit on the first; the owner makes it blink by drawing it again.
class CPicture final : public LView {
public:
    explicit CPicture(const SPaneInfo& info) : LView(info) {}
    explicit CPicture(LStream* stream) : LView(stream) {}

    void DrawSelf() override;

private:
    bool m_lit = true;  ///< in the next draw
};

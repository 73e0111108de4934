#pragma once

#include "Framework/UI/LPane.h"

/// A small indicator, drawn in the middle of its frame and sharp at every scale. It is 20 by 16 units large.
///
/// Attributes of its record besides a pane's: "picture", which must be "window-part" (a part of a longer history is
/// shown) or "follow-newest" (the view moves on with what is newest). Each has an accessible name of its own when the
/// record gives none.
class LPicture : public LPane {
public:
    explicit LPicture(LStream* stream);

    void DrawSelf() override;

private:
    enum class Picture { WindowPart, FollowNewest };

    Picture m_picture;
};

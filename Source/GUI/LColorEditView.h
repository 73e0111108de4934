#pragma once

#include "Framework/Base/LBroadcaster.h"
#include "Framework/UI/LTextEditView.h"

/// The text of an edit-popup field: takes a lone space for an empty text and announces the up and down arrow keys.
class LColorEditView final : public LTextEditView, public LBroadcaster {
public:
    explicit LColorEditView(LStream* stream);
    explicit LColorEditView(const SPaneInfo& info);

    void SetBackColor(const RGBColor& color);

    /// Empty when the text is a single space.
    [[nodiscard]] LStr255 GetDescriptor() const override;

    bool HandleKeyPress(EditKey key) override;

protected:
    void UserChangedText() override;

private:
    [[nodiscard]] bool HoldsOneSpace() const;

    RGBColor m_backColor;
};

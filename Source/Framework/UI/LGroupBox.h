#pragma once

#include "Framework/UI/LView.h"

/// A frame with a title around panes that belong together.
///
/// Attributes of its record besides a pane's: "text", the title.
class LGroupBox : public LView {
public:
    explicit LGroupBox(LStream* stream);

    void SetDescriptor(const LStr255& text) override;
    [[nodiscard]] LStr255 GetDescriptor() const override { return m_text; }

protected:
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;
    void UpdatePeer() override;

private:
    LStr255 m_text;
};

#pragma once

#include "Framework/UI/LPane.h"

/// A bar that moves as long as it is shown: something goes on whose end is not known.
class LProgressBar final : public LPane {
public:
    explicit LProgressBar(LStream* stream);

protected:
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;
};

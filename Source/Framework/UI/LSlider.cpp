#include "Framework/UI/LSlider.h"

#include <QSlider>
#include <QStyle>

int LSlider::ThumbLength() const {
    const QWidget* peer = Peer();
    return peer != nullptr ? peer->style()->pixelMetric(QStyle::PM_SliderLength, nullptr, peer) : 0;
}

std::unique_ptr<QWidget> LSlider::MakePeer(QWidget* parent) {
    return std::make_unique<QSlider>(Qt::Horizontal, parent);
}

#include "Framework/UI/LProgressBar.h"

#include <QProgressBar>

LProgressBar::LProgressBar(LStream* stream) : LPane(stream) {}

std::unique_ptr<QWidget> LProgressBar::MakePeer(QWidget* parent) {
    auto bar = std::make_unique<QProgressBar>(parent);
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    return bar;
}

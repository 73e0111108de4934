#include "Framework/UI/LButton.h"

#include "Framework/UI/LStream.h"
#include "Framework/UI/LayoutAttributes.h"

#include <QToolButton>

#include <array>

LButton::LButton(LStream* stream) : LControl(stream) {
    static constexpr std::array<LayoutAttributes::Word<Arrow>, 4> kArrows{
        {{"left", Arrow::Left}, {"right", Arrow::Right}, {"up", Arrow::Up}, {"down", Arrow::Down}}};
    m_arrow = LayoutAttributes::OneOf<Arrow>(*stream, "arrow", kArrows, Arrow::Right);
}

std::unique_ptr<QWidget> LButton::MakePeer(QWidget* parent) {
    static constexpr std::array<Qt::ArrowType, 4> kArrowTypes{Qt::LeftArrow, Qt::RightArrow, Qt::UpArrow,
                                                              Qt::DownArrow};
    auto button = std::make_unique<QToolButton>(parent);
    button->setArrowType(kArrowTypes.at(static_cast<std::size_t>(m_arrow)));
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(button.get(), &QToolButton::clicked, button.get(), [this] { BroadcastValueMessage(); });
    return button;
}

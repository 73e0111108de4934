#include "Framework/UI/PaneWidget.h"

#include "Framework/UI/Drawing.h"
#include "Framework/UI/LPane.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QPainter>

namespace {

/// A drawn pane as assistive programs see it: a text with the pane's caption as name and what it shows as value.
class AccessiblePane final : public QAccessibleWidget {
public:
    explicit AccessiblePane(PaneWidget* widget) : QAccessibleWidget(widget, QAccessible::StaticText) {}

    /// A value of this role never reaches the readers of this desktop: it goes with the name, as with a caption.
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        const auto* drawn = dynamic_cast<PaneWidget*>(widget());
        QString value = drawn != nullptr ? QString::fromStdString(drawn->Pane().AccessibleValue()) : QString();
        if (kind == QAccessible::Value) {
            return value;
        }
        const QString text = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && !value.isEmpty() ? text + QLatin1String(": ") + value : text;
    }
};

QAccessibleInterface* MakeAccessiblePane(const QString& /*className*/, QObject* object) {
    auto* widget = dynamic_cast<PaneWidget*>(object);
    const bool speaks = widget != nullptr && !widget->accessibleName().isEmpty();
    return speaks ? std::make_unique<AccessiblePane>(widget).release() : nullptr;  // Qt takes it over
}

}  // namespace

PaneWidget::PaneWidget(LPane& pane, QWidget* parent) : QWidget(parent), m_pane(pane) {}

void PaneWidget::AnnounceValue() {
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, QString::fromStdString(m_pane.AccessibleValue()));
        QAccessible::updateAccessibility(&event);
        QAccessibleEvent renamed(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&renamed);
    }
}

void PaneWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Drawing::PortSetter port(painter);
    m_pane.DrawSelf();
}

void PaneWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const QPoint where = event->position().toPoint();
    m_pane.ClickSelf(
        {.whereLocal = {.v = static_cast<std::int16_t>(where.y()), .h = static_cast<std::int16_t>(where.x())}});
}

void InstallPaneAccessibility() {
    QAccessible::installFactory(MakeAccessiblePane);
}

#include "Framework/UI/LCaption.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/LStdButton.h"
#include "Framework/UI/LStdCheckBox.h"
#include "Framework/UI/LStream.h"
#include "Framework/UI/LView.h"
#include "Framework/UI/LWindow.h"
#include "Framework/UI/LayoutAttributes.h"
#include "Framework/UI/LookStyle.h"
#include "Framework/UI/PeerCasts.h"
#include "Framework/UI/WidgetTexts.h"

#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

#include <array>

namespace {

using LayoutAttributes::OneOf;
using LayoutAttributes::Word;

constexpr std::array<Word<LCaption::Style>, 5> kStyles{{{"caption", LCaption::Style::Caption},
                                                        {"value", LCaption::Style::Value},
                                                        {"strong", LCaption::Style::Strong},
                                                        {"alarm", LCaption::Style::Alarm},
                                                        {"quiet", LCaption::Style::Quiet}}};
constexpr std::array<Word<LCaption::Align>, 3> kAligns{
    {{"left", LCaption::Align::Left}, {"right", LCaption::Align::Right}, {"center", LCaption::Align::Center}}};
constexpr std::array<Word<LCaption::Elide>, 3> kElides{
    {{"none", LCaption::Elide::None}, {"right", LCaption::Elide::Right}, {"middle", LCaption::Elide::Middle}}};

/// A label that shows as much of its text as there is room for.
class ElidingLabel final : public QLabel {
public:
    ElidingLabel(Qt::TextElideMode mode, QWidget* parent) : QLabel(parent), m_mode(mode) {}

protected:
    void paintEvent(QPaintEvent* event) override {
        if (!IsTooLong()) {
            QLabel::paintEvent(event);
            return;
        }
        QPainter painter(this);
        style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                              fontMetrics().elidedText(text(), m_mode, width()), foregroundRole());
    }

    bool event(QEvent* event) override {
        if (const auto* help = dynamic_cast<QHelpEvent*>(event);
            help != nullptr && event->type() == QEvent::ToolTip && IsTooLong()) {
            const QString paragraph = QStringLiteral("<p>%1</p>").arg(text().toHtmlEscaped());
            QToolTip::showText(help->globalPos(), paragraph, this);
            return true;
        }
        return QLabel::event(event);
    }

private:
    [[nodiscard]] bool IsTooLong() const {
        return m_mode != Qt::ElideNone && fontMetrics().horizontalAdvance(text()) > width();
    }

    Qt::TextElideMode m_mode;
};

Look::Role InkOf(LCaption::Style style) {
    switch (style) {
        case LCaption::Style::Caption:
            return Look::Role::CaptionText;
        case LCaption::Style::Value:
        case LCaption::Style::Strong:
            return Look::Role::Text;
        case LCaption::Style::Alarm:
            return Look::Role::AlarmText;
        case LCaption::Style::Quiet:
            return Look::Role::QuietText;
    }
    return Look::Role::Text;
}

Qt::Alignment AlignmentOf(LCaption::Align align) {
    switch (align) {
        case LCaption::Align::Left:
            return Qt::AlignLeft;
        case LCaption::Align::Right:
            return Qt::AlignRight;
        case LCaption::Align::Center:
            return Qt::AlignHCenter;
    }
    return Qt::AlignLeft;
}

Qt::TextElideMode ElideModeOf(LCaption::Elide elide) {
    switch (elide) {
        case LCaption::Elide::None:
            return Qt::ElideNone;
        case LCaption::Elide::Right:
            return Qt::ElideRight;
        case LCaption::Elide::Middle:
            return Qt::ElideMiddle;
    }
    return Qt::ElideNone;
}

/// The first widget of the pane, or inside it, that takes the keyboard.
QWidget* KeyboardWidget(LPane& pane) {
    QWidget* peer = pane.Peer();
    if (peer != nullptr && (peer->focusPolicy() & Qt::TabFocus) != 0) {
        return peer;
    }
    if (auto* view = dynamic_cast<LView*>(&pane)) {
        for (const auto& inside : view->SubPanes()) {
            if (QWidget* widget = KeyboardWidget(*inside)) {
                return widget;
            }
        }
    }
    return nullptr;
}

/// Names the pane, and all panes in it, unless they have names or words of their own.
void GiveName(LPane& pane, const std::string& name) {
    const bool hasWords = dynamic_cast<LCaption*>(&pane) != nullptr || dynamic_cast<LStdButton*>(&pane) != nullptr ||
                          dynamic_cast<LStdCheckBox*>(&pane) != nullptr;
    if (pane.GetAccessibleName().empty() && !hasWords) {
        pane.SetAccessibleName(name);
    }
    if (auto* view = dynamic_cast<LView*>(&pane)) {
        for (const auto& inside : view->SubPanes()) {
            GiveName(*inside, name);
        }
    }
}

/// "Duration:" names a field "Duration".
std::string WithoutColon(std::string_view text) {
    return std::string(text.substr(0, text.ends_with(':') ? text.size() - 1 : text.size()));
}

}  // namespace

LCaption::LCaption(LStream* stream)
    : LPane(stream), m_text(std::string_view(stream->Text("text"))),
      m_style(OneOf<Style>(*stream, "style", kStyles, Style::Caption)),
      m_align(OneOf<Align>(*stream, "align", kAligns, Align::Left)),
      m_elide(OneOf<Elide>(*stream, "elide", kElides, Elide::None)), m_wraps(stream->Flag("wrap")),
      m_namedPane(stream->Number("for")), m_key(LayoutAttributes::Key(*stream)), m_description(stream->Description()) {}

void LCaption::SetDescriptor(const LStr255& text) {
    m_text = text;
    if (Peer() != nullptr) {
        PushText();
    }
}

void LCaption::FinishCreateSelf() {
    LWindow* window = GetWindow();
    if (m_namedPane == 0 || window == nullptr) {
        return;
    }
    LPane* named = window->FindPaneByID(m_namedPane);
    if (named == nullptr) {
        throw LResourceException(m_description + ": there is no pane " + std::to_string(m_namedPane) + " to name");
    }
    GiveName(*named, WithoutColon(m_text.View()));
    if (auto* label = PeerIfAny<QLabel>(*this)) {
        label->setBuddy(KeyboardWidget(*named));
        PushText();
    }
}

std::unique_ptr<QWidget> LCaption::MakePeer(QWidget* parent) {
    auto label = std::make_unique<ElidingLabel>(ElideModeOf(m_elide), parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(m_wraps);
    label->setAlignment(AlignmentOf(m_align) | (m_wraps ? Qt::AlignTop : Qt::AlignVCenter));
    if (m_style == Style::Strong) {
        QFont font = label->font();
        font.setBold(true);
        label->setFont(font);
    }
    QPalette palette = label->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::WindowText, LookStyle::WidgetColor(InkOf(m_style)));
    }
    label->setPalette(palette);
    return label;
}

void LCaption::UpdatePeer() {
    LPane::UpdatePeer();
    PushText();
}

void LCaption::PushText() {
    auto& label = PeerOf<QLabel>(*this);
    const bool hasKey = label.buddy() != nullptr;
    label.setText(hasKey ? WidgetTexts::Face(m_text.View(), m_key) : WidgetTexts::FromPane(m_text.View()));
    if (!GetAccessibleName().empty()) {
        const QString name = QString::fromStdString(GetAccessibleName());
        label.setAccessibleName(m_text.Length() > 0 ? name + QLatin1String(": ") + WidgetTexts::FromPane(m_text.View())
                                                    : name);
    }
}

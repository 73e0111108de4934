#include "Framework/UI/StandardAlert.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/LWindow.h"
#include "Framework/UI/WidgetTexts.h"

#include <QGridLayout>
#include <QMessageBox>

#include <deque>
#include <memory>
#include <utility>

namespace {

constexpr int kCharactersInLine = 64;

struct Alert {
    QString message;
    QString explanation;
    std::function<void()> answered;
};

/// The text as a paragraph in the given markup. Texts of lists may end their lines with a carriage return.
QString Paragraph(const char* markup, TextArgument text) {
    const QString escaped = WidgetTexts::FromPane(text.View()).toHtmlEscaped();
    return QString::fromLatin1(markup).arg(QString(escaped).replace(QLatin1Char('\r'), QLatin1String("<br>")));
}

/// Wide enough for a sentence in few lines, whatever the size of the font.
void Widen(QMessageBox& box) {
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout())) {
        const int width = box.fontMetrics().averageCharWidth() * kCharactersInLine;
        grid->addItem(std::make_unique<QSpacerItem>(width, 0).release(), grid->rowCount(), 0, 1, grid->columnCount());
    }
}

/// The alerts of one window; goes with the window's widget.
class AlertQueue final : public QObject {
public:
    explicit AlertQueue(QWidget& window) : QObject(&window), m_window(window) {}

    static AlertQueue& Of(QWidget& window) {
        for (QObject* child : window.children()) {
            if (auto* queue = dynamic_cast<AlertQueue*>(child)) {
                return *queue;
            }
        }
        return *std::make_unique<AlertQueue>(window).release();  // the window's child
    }

    void Add(Alert alert) {
        m_waiting.push_back(std::move(alert));
        ShowNext();
    }

private:
    void ShowNext() {
        if (m_isShowing || m_waiting.empty()) {
            return;
        }
        m_isShowing = true;
        const Alert& alert = m_waiting.front();
        auto box = std::make_unique<QMessageBox>(QMessageBox::Warning, m_window.windowTitle(), alert.message,
                                                 QMessageBox::Ok, &m_window);
        box->setTextFormat(Qt::RichText);
        box->setInformativeText(alert.explanation);
        Widen(*box);
        box->setTextInteractionFlags(Qt::TextSelectableByMouse);
        box->setAttribute(Qt::WA_DeleteOnClose);
        connect(box.get(), &QDialog::finished, this, &AlertQueue::Answer);
        box.release()->open();  // modal for its window; deletes itself
    }

    void Answer() {
        const Alert alert = std::move(m_waiting.front());
        m_waiting.pop_front();
        m_isShowing = false;
        if (alert.answered) {
            alert.answered();
        }
        ShowNext();
    }

    QWidget& m_window;
    std::deque<Alert> m_waiting;  ///< the first is being shown
    bool m_isShowing = false;
};

}  // namespace

void StandardAlert::Show(LWindow& window, TextArgument message, TextArgument explanation,
                         std::function<void()> answered) {
    QWidget* shell = ThrowIfNil(window.Shell(), "the window of an alert");
    AlertQueue::Of(*shell).Add({.message = Paragraph("<b>%1</b>", message),
                                .explanation = Paragraph("<p>%1</p>", explanation),
                                .answered = std::move(answered)});
}

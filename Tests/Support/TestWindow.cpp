#include "Support/TestWindow.h"

#include "Framework/UI/ControlLinks.h"
#include "Framework/UI/TRegistrar.h"

#include <QAccessible>
#include <QApplication>
#include <QDeadlineTimer>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <utility>

TestWindow::TestWindow(const std::string& panes, const std::string& classID) {
    LStream stream = Record("<" + classID + " id=\"9999\" width=\"600\" height=\"400\" title=\"Test\">" + panes + "</" +
                            classID + ">");
    std::unique_ptr<LPane> pane = PaneClasses::CreateWithSubPanes(stream);
    m_window.reset(ThrowIfNil(dynamic_cast<LWindow*>(pane.get()), "the window of the test"));
    static_cast<void>(pane.release());
    m_window->BuildPeer(nullptr);
    m_window->FinishCreate();
    LinkListenerToControls(m_recorder, *m_window);
    m_window->Show();
    m_window->Shell()->activateWindow();
    static_cast<void>(RunEventsUntil([&] { return m_window->Shell()->isActiveWindow(); }));
}

LStream Record(const std::string& xml) {
    return LStream::Parse(xml, "layout 7");
}

std::vector<QMessageBox*> ShownAlerts() {
    std::vector<QMessageBox*> shown;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* box = qobject_cast<QMessageBox*>(widget); box != nullptr && box->isVisible()) {
            shown.push_back(box);
        }
    }
    return shown;
}

std::string TextOf(const QMessageBox& alert) {
    QString text = alert.text() + alert.informativeText();
    return text.remove(QRegularExpression("<[^>]*>")).toStdString();
}

std::string AccessibleName(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name).toStdString();
}

bool RunEventsUntil(const std::function<bool()>& condition) {
    QTimer waker;  // so that the loop looks again while nothing else happens
    waker.start(5);
    const QDeadlineTimer hopeless(std::chrono::seconds(20));
    while (!condition()) {
        if (hopeless.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void MessageRecorder::ListenToMessage(MessageT message, void* ioParam) {
    m_told.push_back({.message = message, .value = ioParam != nullptr ? *static_cast<std::int32_t*>(ioParam) : -1});
}

std::vector<MessageRecorder::Told> MessageRecorder::Take() {
    return std::exchange(m_told, {});
}

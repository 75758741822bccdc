// Another program's window that takes drops. On its output stand lines: "ready X Y" with its middle on the
// screen, "over" when a drag may be dropped, and for a drop its action, each type with its bytes in
// hexadecimal, and "dropped".

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <cstdio>

namespace {

class Target final : public QWidget {
public:
    Target() { setAcceptDrops(true); }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }
    void dragMoveEvent(QDragMoveEvent* event) override {
        event->acceptProposedAction();
        say("over");
    }
    void dropEvent(QDropEvent* event) override {
        std::printf("move %d\n", event->possibleActions().testFlag(Qt::MoveAction) ? 1 : 0);
        for (const QString& format : event->mimeData()->formats())
            std::printf("%s %s\n", format.toUtf8().constData(),
                        event->mimeData()->data(format).toHex().constData());
        event->acceptProposedAction();
        say("dropped");
    }
    void paintEvent(QPaintEvent*) override {
        if (m_said)
            return;
        m_said = true;
        const QPoint middle = mapToGlobal(rect().center());
        std::printf("ready %d %d\n", middle.x(), middle.y());
        std::fflush(stdout);
    }

private:
    static void say(const char* word) {
        std::puts(word);
        std::fflush(stdout);
    }
    bool m_said = false;
};

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    Target target;
    target.setGeometry(700, 200, 200, 200);
    target.show();
    return QApplication::exec();
}

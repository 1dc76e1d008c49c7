// A window to drag from: whatever is pressed on it is a drag of the given data.
//
//     drag_source X Y MIME_TYPE HEX_BYTES ACTION...
//
// ACTION: copy, move. It prints "ready" when it can be seen and the action that came of each drag.
#include <QBackingStore>
#include <QByteArray>
#include <QDrag>
#include <QExposeEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>
#include <iostream>
#include <utility>

namespace {

constexpr QSize kSize(60, 60);

class Source : public QWindow {
  public:
    Source(QString type, QByteArray bytes, Qt::DropActions actions)
        : type_(std::move(type)), bytes_(std::move(bytes)), actions_(actions), store_(this) {}

  protected:
    void exposeEvent(QExposeEvent* /*event*/) override {
        if (!isExposed()) {
            return;
        }
        const QRect all({0, 0}, size());
        store_.resize(size());
        store_.beginPaint(all);
        QPainter(store_.paintDevice()).fillRect(all, Qt::green);
        store_.endPaint();
        store_.flush(all);
        if (!std::exchange(seen_, true)) {
            std::cout << "ready" << std::endl;
        }
    }

    void mousePressEvent(QMouseEvent* /*event*/) override {
        auto* data = new QMimeData;  // the drag owns it
        data->setData(type_, bytes_);
        auto* drag = new QDrag(this);  // outlives the drop, when its data is asked for
        drag->setMimeData(data);
        std::cout << "dragging" << std::endl;
        const Qt::DropAction action = drag->exec(actions_);
        std::cout << (action == Qt::CopyAction   ? "copied"
                      : action == Qt::MoveAction ? "moved"
                                                 : "refused")
                  << std::endl;
    }

  private:
    QString type_;
    QByteArray bytes_;
    Qt::DropActions actions_;
    QBackingStore store_;
    bool seen_ = false;
};

}  // namespace

int main(int count, char** arguments) {
    QGuiApplication application(count, arguments);
    const QStringList words = QGuiApplication::arguments();
    if (words.size() < 6) {
        return 2;
    }
    Qt::DropActions actions;
    actions.setFlag(Qt::CopyAction, words.contains("copy"));
    actions.setFlag(Qt::MoveAction, words.contains("move"));
    Source source(words[3], QByteArray::fromHex(words[4].toLatin1()), actions);
    source.setTitle("Source");
    source.setFlags(Qt::FramelessWindowHint);
    source.setGeometry({{words[1].toInt(), words[2].toInt()}, kSize});
    source.show();
    return QGuiApplication::exec();
}

// What the toolkit itself takes: a widget of the player's size with one line of text, at 100, 100.
#include <QApplication>
#include <QLabel>

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    QLabel label("The Plucked Strings - Morning Stairs");
    label.setFixedSize(293, 277);
    label.move(100, 100);
    label.setWindowFlags(Qt::FramelessWindowHint);
    label.show();
    return QApplication::exec();
}

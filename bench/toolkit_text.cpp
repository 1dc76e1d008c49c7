// Rows of text as the toolkit by itself draws them, for comparison: no cache, no surfaces, nothing
// of ours.
//
//     toolkit_text FACTOR WIDTH HEIGHT ROW INK PAPER : titles on standard input, a line each;
//
// sizes are units, colours hexadecimal RRGGBB. Writes the picture's pixels, three bytes each.
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <string>

namespace {

QFont RowFont(double factor) {
    constexpr int kPixels = 11;  // 8 points
    QFont font;
    font.setFamilies({"Tahoma", "DejaVu Sans Condensed", "Noto Sans", "Liberation Sans"});
    font.setPixelSize(static_cast<int>(std::lround(kPixels * factor)));
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    return font;
}

}  // namespace

int main(int count, char** arguments) {
    constexpr int kArguments = 7;
    if (count != kArguments) {
        std::cerr << "toolkit_text FACTOR WIDTH HEIGHT ROW INK PAPER\n";
        return 1;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, arguments);
    const double factor = std::stod(arguments[1]);
    const auto pixels = [&](const char* units) {
        return static_cast<int>(std::lround(std::stod(units) * factor));
    };
    QImage image(pixels(arguments[2]), pixels(arguments[3]), QImage::Format_RGB888);
    image.fill(QColor('#' + QString(arguments[6])));
    QPainter painter(&image);
    painter.setFont(RowFont(factor));
    painter.setPen(QColor('#' + QString(arguments[5])));
    std::string title;
    const double row = std::stod(arguments[4]) * factor;
    for (int i = 0; std::getline(std::cin, title); ++i) {
        const auto base = static_cast<int>(std::lround(i * row)) + painter.fontMetrics().ascent();
        painter.drawText(0, base, QString::fromStdString(title));
    }
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        std::fwrite(image.constScanLine(y), 3, static_cast<std::size_t>(image.width()), stdout);
    }
    return 0;
}

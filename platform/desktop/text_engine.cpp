#include "platform/desktop/text_engine.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "platform/base/text.h"
#include "platform/desktop/qt_text.h"

namespace platform::desktop {

namespace {

// Shaping takes memory for each unit, so a very long line is shaped stretch by stretch.
constexpr std::size_t kStretch = 8192;

struct Substitutes {
    const char* name;
    std::array<const char*, 4> families;  // nearest metrics first
};
constexpr std::array kSubstitutes = {
    Substitutes{"tahoma", {"DejaVu Sans Condensed", "Noto Sans", "Liberation Sans", "DejaVu Sans"}},
    Substitutes{"lucida sans unicode",
                {"Lucida Grande", "DejaVu Sans", "Noto Sans", "Liberation Sans"}},
    Substitutes{"arial", {"Liberation Sans", "Arimo", "Nimbus Sans", "DejaVu Sans"}},
};

int PixelSize(const Font& font) {
    constexpr double kPixelsPerPoint = 96.0 / 72.0;
    constexpr double kLargest = 1000;
    return static_cast<int>(std::clamp(std::round(font.size * kPixelsPerPoint), 1.0, kLargest));
}

QFont MakeFont(const Font& font) {
    const QString name = WholeCharacters(font.name);
    QStringList families{name};
    for (const Substitutes& known : kSubstitutes) {
        if (name.compare(QLatin1String(known.name), Qt::CaseInsensitive) == 0) {
            for (const char* family : known.families) {
                families.append(QString::fromLatin1(family));
            }
        }
    }
    QFont made;
    made.setFamilies(families);
    made.setPixelSize(PixelSize(font));
    made.setBold(font.bold);
    made.setItalic(font.italic);
    made.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    made.setHintingPreference(QFont::PreferFullHinting);
    return made;
}

}  // namespace

Size SizeWithoutFonts(const Font& font, std::u16string_view text) {
    constexpr std::size_t kLongest = 1'000'000;  // units; more would leave the range of a width
    const int height = PixelSize(font);
    const int unit = (height + 1) / 2;
    return {static_cast<Long>(std::min(text.size(), kLongest)) * unit, height};
}

struct TextEngine::Face {
    explicit Face(const Font& asked) : font(asked), made(MakeFont(asked)) {
        const QFontMetrics metrics(made);
        height = std::max(metrics.height(), 1);
        ascent = metrics.ascent();
    }

    Font font;
    QFont made;
    Long height = 0;
    Long ascent = 0;
};

struct TextEngine::Line {
    struct Stretch {
        std::size_t start = 0;
        double left = 0;
        std::unique_ptr<QTextLayout> layout;

        QTextLine Shaped() const { return layout->lineAt(0); }
    };

    Line(const Face& shapedWith, std::u16string_view shaped) : face(&shapedWith), text(shaped) {
        double right = 0;
        for (std::size_t start = 0; start < shaped.size();) {
            std::size_t length = std::min(kStretch, shaped.size() - start);
            if (InsidePair(shaped, start + length)) {
                --length;
            }
            stretches.push_back({start, right, LayOut(OneLine(shaped.substr(start, length)))});
            right += stretches.back().Shaped().naturalTextWidth();
            start += length;
        }
        width = static_cast<Long>(std::ceil(right));
    }

    std::unique_ptr<QTextLayout> LayOut(const QString& stretch) const {
        QTextOption option(Qt::AlignLeft);
        option.setWrapMode(QTextOption::NoWrap);
        option.setTextDirection(Qt::LeftToRight);
        option.setFlags(QTextOption::IncludeTrailingSpaces);
        auto layout = std::make_unique<QTextLayout>(stretch, face->made);
        layout->setTextOption(option);
        layout->setCacheEnabled(true);
        layout->beginLayout();
        QTextLine line = layout->createLine();
        constexpr double kWideEnough = 4'000'000;
        line.setLineWidth(kWideEnough);
        line.setPosition({0, 0});
        layout->endLayout();
        return layout;
    }

    const Face* face;
    std::u16string text;
    std::vector<Stretch> stretches;
    Long width = 0;
};

TextEngine::TextEngine() = default;
TextEngine::~TextEngine() = default;

const TextEngine::Face& TextEngine::FaceFor(const Font& font) {
    const auto found = std::find_if(faces_.begin(), faces_.end(),
                                    [&](const auto& face) { return face->font == font; });
    if (found != faces_.end()) {
        return **found;
    }
    faces_.push_back(std::make_unique<Face>(font));
    return *faces_.back();
}

const TextEngine::Line& TextEngine::Shape(const Font& font, std::u16string_view text) {
    const Face& face = FaceFor(font);
    if (line_ == nullptr || line_->face != &face || line_->text != text) {
        line_ = std::make_unique<Line>(face, text);
    }
    return *line_;
}

Size TextEngine::Measure(const Font& font, std::u16string_view text) {
    const Line& line = Shape(font, text);
    return {line.width, line.face->height};
}

TextPicture TextEngine::Render(const Font& font, std::u16string_view text, Long left, Long width) {
    const Line& line = Shape(font, text);
    const Long columns = std::clamp(line.width - left, 0, std::max(width, 0));
    TextPicture picture{columns, line.face->height, {}};
    if (columns == 0) {
        return picture;
    }
    QImage image(columns, picture.height, QImage::Format_Alpha8);
    image.fill(0);
    QPainter painter(&image);
    painter.setPen(Qt::black);
    for (const Line::Stretch& stretch : line.stretches) {
        const QTextLine shaped = stretch.Shaped();
        const double from = stretch.left - left;
        if (from < columns && from + shaped.naturalTextWidth() > 0) {
            // A substitute for a single character may be higher than the font; the base line stays.
            shaped.draw(&painter, {from, line.face->ascent - shaped.ascent()});
        }
    }
    painter.end();
    picture.coverage.reserve(static_cast<std::size_t>(columns) *
                             static_cast<std::size_t>(picture.height));
    for (int y = 0; y < picture.height; ++y) {
        const uchar* row = image.constScanLine(y);
        picture.coverage.insert(picture.coverage.end(), row, row + columns);
    }
    return picture;
}

Long TextEngine::Offset(const Font& font, std::u16string_view text, std::size_t index) {
    const Line& line = Shape(font, text);
    double offset = 0;
    for (const Line::Stretch& stretch : line.stretches) {
        if (stretch.start <= index) {
            offset =
                stretch.left + stretch.Shaped().cursorToX(static_cast<int>(index - stretch.start));
        }
    }
    return static_cast<Long>(std::lround(offset));
}

}  // namespace platform::desktop

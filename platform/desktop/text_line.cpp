#include "platform/desktop/text_line.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "platform/base/text.h"
#include "platform/desktop/glyph_places.h"
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

QFont MakeFont(const Font& font, Long times) {
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
    made.setPixelSize(PixelSizeOf(font) * times);
    made.setBold(font.bold);
    made.setItalic(font.italic);
    made.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    made.setHintingPreference(QFont::PreferFullHinting);
    return made;
}

// A glyph of a line in both sizes.
struct Pair {
    std::size_t group;
    qsizetype number;
    GlyphPlace place;
};

// Nothing if the fonts have other glyphs in one size than in the other.
std::vector<Pair> PairsOf(const std::vector<GlyphGroup>& fine, std::vector<GlyphGroup> plain) {
    std::vector<Pair> pairs;
    for (std::size_t group = 0; group < fine.size(); ++group) {
        const QGlyphRun& run = fine[group].run;
        const QList<quint32> glyphs = run.glyphIndexes();
        const auto same = std::ranges::find_if(
            plain, [&](const GlyphGroup& other) { return other.run.glyphIndexes() == glyphs; });
        if (same == plain.end()) {
            return {};
        }
        const QList<quint32> blanks = run.rawFont().glyphIndexesForString(QStringLiteral(" "));
        const quint32 blank = blanks.isEmpty() ? 0 : blanks.front();
        const auto plainPlaces = same->run.positions();
        const auto finePlaces = run.positions();
        for (qsizetype i = 0; i < glyphs.size(); ++i) {
            pairs.push_back(
                {group, i, {plainPlaces[i].x(), finePlaces[i].x(), glyphs[i] == blank}});
        }
        plain.erase(same);
    }
    std::ranges::stable_sort(pairs, {}, [](const Pair& pair) { return pair.place.plain; });
    return pairs;
}

void Shift(GlyphGroup& group, const std::vector<double>& shifts) {
    auto places = group.run.positions();
    for (qsizetype i = 0; i < places.size(); ++i) {
        places[i].rx() += shifts[static_cast<std::size_t>(i)];
    }
    group.run.setPositions(places);
}

// Where glyphs have nothing to go by, the line is drawn closer all along.
void Squeeze(std::vector<GlyphGroup>& groups, double share) {
    for (GlyphGroup& group : groups) {
        std::vector<double> shifts;
        for (const QPointF& place : group.run.positions()) {
            shifts.push_back(std::floor(place.x() * share) - place.x());
        }
        Shift(group, shifts);
    }
}

}  // namespace

int PixelSizeOf(const Font& font) {
    constexpr double kPixelsPerPoint = 96.0 / 72.0;
    constexpr double kLargest = 1000;
    return static_cast<int>(std::clamp(std::round(font.size * kPixelsPerPoint), 1.0, kLargest));
}

FontSetting::FontSetting(const Font& asked, Long times)
    : density(times), made(MakeFont(asked, times)) {
    const QFontMetrics metrics(made);
    room.height = std::max(metrics.height(), 1);
    room.base = metrics.ascent();
}

// Heights are rounded, so there may be a row to spare, or one too few.
FontSetting::FontSetting(const Font& asked, Long times, const LineRoom& plain)
    : FontSetting(asked, times) {
    const int spare = plain.height * times - room.height;
    room.height += spare;
    room.base = spare < 0 ? plain.base * times : room.base + (spare + 1) / 2;
}

const FontSetting& FontFace::At(Long density) {
    if (density == 1) {
        return plain_;
    }
    if (fine_ == nullptr || fine_->density != density) {
        fine_ = std::make_unique<FontSetting>(font_, density, plain_.room);
    }
    return *fine_;
}

// The toolkit draws larger glyphs several times as fast where it has colours to draw them in.
TextCanvas::TextCanvas(Long width, Long height, Long density)
    : coverage_(width, height,
                density == 1 ? QImage::Format_Alpha8 : QImage::Format_ARGB32_Premultiplied) {
    coverage_.fill(Qt::transparent);
}

void TextCanvas::Draw(const QTextLine& line, QPointF at) {
    QPainter painter(&coverage_);
    painter.setPen(Qt::black);
    line.draw(&painter, at);
}

void TextCanvas::Draw(const GlyphGroup& group, QPointF at) {
    if (group.coloured && colours_.isNull()) {
        colours_ = QImage(coverage_.size(), QImage::Format_ARGB32_Premultiplied);
        colours_.fill(Qt::transparent);
    }
    QPainter painter(group.coloured ? &colours_ : &coverage_);
    painter.setPen(Qt::black);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawGlyphRun(at, group.run);
}

void TextCanvas::MoveTo(TextPicture& picture) const {
    const auto pixels =
        static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    picture.coverage.resize(pixels);
    auto write = picture.coverage.begin();
    for (int y = 0; y < picture.height; ++y) {
        if (coverage_.format() == QImage::Format_Alpha8) {
            write = std::copy_n(coverage_.constScanLine(y), picture.width, write);
            continue;
        }
        const auto* row = reinterpret_cast<const QRgb*>(coverage_.constScanLine(y));
        write = std::transform(row, row + picture.width, write,
                               [](QRgb pixel) { return static_cast<std::uint8_t>(qAlpha(pixel)); });
    }
    if (colours_.isNull()) {
        return;
    }
    picture.colours.reserve(pixels);
    for (int y = 0; y < picture.height; ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(colours_.constScanLine(y));
        picture.colours.insert(picture.colours.end(), row, row + picture.width);
    }
}

TextLine::TextLine(FontFace& face, std::u16string_view text) : face_(face), text_(text) {
    const FontSetting& plain = face.Plain();
    double right = 0;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t length = std::min(kStretch, text.size() - start);
        if (InsidePair(text, start + length)) {
            --length;
        }
        const QString words = OneLine(text.substr(start, length));
        auto shaped = std::make_unique<ShapedStretch>(words, plain.made, plain.room);
        if (start == 0 && (plain.made.italic() || words[0].unicode() >= 0x80)) {
            right = std::max(shaped->Lead(), 0);
        }
        stretches_.push_back({start, right, words, std::move(shaped), {}});
        right += stretches_.back().Width();
        start += length;
    }
    width_ = static_cast<Long>(std::ceil(right));
}

Long TextLine::Offset(std::size_t index) const {
    double offset = 0;
    for (const Stretch& stretch : stretches_) {
        if (stretch.start <= index) {
            offset = stretch.left +
                     stretch.plain->Line().cursorToX(static_cast<int>(index - stretch.start));
        }
    }
    return static_cast<Long>(std::lround(offset));
}

TextPicture TextLine::Render(Long left, Long width, Long density) {
    const Long columns = std::clamp(width_ - left, 0, std::max(width, 0));
    const FontSetting& setting = face_.At(density);
    TextPicture picture{columns * density, setting.room.height, {}, density, {}};
    if (columns == 0) {
        return picture;
    }
    if (density_ != density) {
        for (Stretch& stretch : stretches_) {
            stretch.fine.clear();
        }
        density_ = density;
    }
    TextCanvas canvas(picture.width, picture.height, density);
    for (Stretch& stretch : stretches_) {
        const double from = (stretch.left - left) * density;
        if (from < picture.width && from + stretch.Width() * density > 0) {
            Draw(canvas, stretch, {from, double{1} * setting.room.base}, setting);
        }
    }
    canvas.MoveTo(picture);
    return picture;
}

void TextLine::Draw(TextCanvas& canvas, Stretch& stretch, QPointF at, const FontSetting& setting) {
    if (setting.density == 1 && stretch.plain->IsPlain()) {
        const QTextLine line = stretch.plain->Line();
        // A substitute for a single character may be higher than the font; the base line stays.
        canvas.Draw(line, at - QPointF(0, line.ascent()));
        return;
    }
    if (stretch.fine.empty()) {
        Refine(stretch, setting);
    }
    for (const GlyphGroup& group : stretch.fine) {
        canvas.Draw(group, at);
    }
}

void TextLine::Refine(Stretch& stretch, const FontSetting& setting) {
    if (setting.density == 1) {
        stretch.fine = stretch.plain->Groups(*stretch.plain);
        return;
    }
    const ShapedStretch shaped(stretch.text, setting.made, setting.room, stretch.plain.get(),
                               setting.density);
    stretch.fine = shaped.Groups(*stretch.plain);
    std::vector<Pair> pairs = PairsOf(stretch.fine, stretch.plain->Groups(shaped));
    const bool isLast = &stretch == &stretches_.back();
    const double right = isLast ? width_ : stretch.left + stretch.Width();
    LineMeasures measures;
    measures.density = setting.density;
    measures.fineLead = stretch.start == 0 ? shaped.Lead() - stretch.left * setting.density : 0;
    measures.fineWidth = shaped.Line().naturalTextWidth();
    measures.room = (right - stretch.left) * setting.density;
    measures.joined = shaped.IsJoined();
    if (pairs.empty()) {
        Squeeze(stretch.fine, std::min(measures.room / std::max(measures.fineWidth, 1.0), 1.0));
        return;
    }
    std::vector<GlyphPlace> places;
    for (const Pair& pair : pairs) {
        places.push_back(pair.place);
    }
    PlaceGlyphs(places, measures);
    std::vector<std::vector<double>> shifts(stretch.fine.size());
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        auto& ofGroup = shifts[pairs[i].group];
        ofGroup.resize(std::max(ofGroup.size(), static_cast<std::size_t>(pairs[i].number) + 1));
        ofGroup[static_cast<std::size_t>(pairs[i].number)] = places[i].shift;
    }
    for (std::size_t group = 0; group < shifts.size(); ++group) {
        Shift(stretch.fine[group], shifts[group]);
    }
}

}  // namespace platform::desktop

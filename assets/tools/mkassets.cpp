// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// Turns a drawing (SVG) into a shipped picture:
//
//   mkassets PALETTE DRAWING OUT VARIANT:SIZE...
//
// OUT is a .jpg, .bmp or .png, an .ico with several pictures, or an .svg with nothing but the variant. SIZE
// is a side or WIDTHxHEIGHT in pixels.
//
// A drawing holds several pictures that share their parts: an element with the attribute data-bild="05 06"
// belongs to the variants "05" and "06" alone, one without it to all. Colours come from the palette, or the
// run fails.
#include <QBuffer>
#include <QCoreApplication>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSet>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

constexpr int JpegQuality = 90;

[[noreturn]] void Fail(const QString &text)
{
    throw std::runtime_error(text.toStdString());
}

QByteArray ReadFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        Fail(u"%1: %2"_s.arg(path, file.errorString()));
    return file.readAll();
}

QSet<QString> ReadPalette(const QString &path)
{
    static const QRegularExpression colour(u"#[0-9A-Fa-f]{6}\\b"_s);
    QSet<QString> palette;
    auto matches = colour.globalMatch(QString::fromUtf8(ReadFile(path)));
    while (matches.hasNext())
        palette.insert(matches.next().captured().toUpper());
    return palette;
}

// The colour values that one element names, in attributes or in a style.
QStringList PaintValues(const QXmlStreamAttributes &attributes)
{
    static const QStringList paints{u"fill"_s, u"stroke"_s, u"stop-color"_s};
    QStringList values;
    for (const auto &attribute : attributes) {
        if (paints.contains(attribute.qualifiedName().toString())) {
            values << attribute.value().toString();
        } else if (attribute.qualifiedName() == "style"_L1) {
            for (const QString &entry : attribute.value().toString().split(u';', Qt::SkipEmptyParts)) {
                const qsizetype colon = entry.indexOf(u':');
                if (colon > 0 && paints.contains(entry.left(colon).trimmed()))
                    values << entry.mid(colon + 1).trimmed();
            }
        }
    }
    return values;
}

bool MayPaint(const QString &value, const QSet<QString> &palette)
{
    return value == "none"_L1 || value.startsWith("url(#"_L1) || palette.contains(value.toUpper());
}

// The drawing with the elements of `variant` and those of all variants.
QByteArray PickVariant(const QString &path, const QString &variant, const QSet<QString> &palette)
{
    QXmlStreamReader in(ReadFile(path));
    QByteArray picked;
    QXmlStreamWriter out(&picked);
    bool seen = false;
    while (!in.atEnd()) {
        in.readNext();
        if (in.isStartElement()) {
            const QXmlStreamAttributes attributes = in.attributes();
            for (const QString &value : PaintValues(attributes))
                if (!MayPaint(value, palette))
                    Fail(u"%1:%2: %3 is not in the palette"_s.arg(path).arg(in.lineNumber()).arg(value));
            if (attributes.hasAttribute("data-bild"_L1)) {
                const QStringList variants =
                    attributes.value("data-bild"_L1).toString().split(u' ', Qt::SkipEmptyParts);
                if (!variants.contains(variant)) {
                    in.skipCurrentElement();
                    continue;
                }
                seen = true;
            }
        }
        if (!in.hasError())
            out.writeCurrentToken(in);
    }
    if (in.hasError())
        Fail(u"%1:%2: %3"_s.arg(path).arg(in.lineNumber()).arg(in.errorString()));
    if (!seen && !variant.isEmpty())
        Fail(u"%1: nothing in it belongs to \"%2\""_s.arg(path, variant));
    return picked;
}

struct Picture
{
    QByteArray drawing;
    QSize size;
};

Picture ReadPicture(const QString &argument, const QString &drawing, const QSet<QString> &palette)
{
    static const QRegularExpression form(u"^(.*):(\\d{1,4})(?:x(\\d{1,4}))?$"_s);
    const auto match = form.match(argument);
    if (!match.hasMatch())
        Fail(u"\"%1\" is not VARIANT:SIZE"_s.arg(argument));
    const int width = match.captured(2).toInt();
    const int height = match.capturedLength(3) > 0 ? match.captured(3).toInt() : width;
    return {PickVariant(drawing, match.captured(1), palette), {width, height}};
}

QImage Render(const Picture &picture, QImage::Format format)
{
    QSvgRenderer renderer;
    if (!renderer.load(picture.drawing) || picture.size.isEmpty())
        Fail(u"cannot be drawn"_s);
    QImage image(picture.size, format);
    image.fill(format == QImage::Format_RGB32 ? Qt::white : Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter);
    return image;
}

QByteArray Encode(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    if (QByteArrayView(format) == QByteArrayView("jpg")) {
        writer.setQuality(JpegQuality);
        writer.setOptimizedWrite(true);
    }
    if (!writer.write(image))
        Fail(writer.errorString());
    return bytes;
}

// An icon file whose pictures are all stored as PNG.
QByteArray IconFile(const QList<Picture> &pictures)
{
    constexpr qsizetype HeaderSize = 6;
    constexpr qsizetype EntrySize = 16;
    QByteArray bytes;
    QByteArray images;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16{0} << quint16{1} << static_cast<quint16>(pictures.size()); // 1: an icon, no cursor
    for (const Picture &picture : pictures) {
        if (picture.size.width() > 256 || picture.size.height() > 256)
            Fail(u"an icon is at most 256 pixels wide and high"_s);
        const QByteArray image = Encode(Render(picture, QImage::Format_ARGB32), "png");
        const qsizetype offset = HeaderSize + EntrySize * pictures.size() + images.size();
        // 256 is written as 0
        out << static_cast<quint8>(picture.size.width()) << static_cast<quint8>(picture.size.height());
        // no colour table, 1 plane, 32 bits a pixel
        out << quint16{0} << quint16{1} << quint16{32};
        out << static_cast<quint32>(image.size()) << static_cast<quint32>(offset);
        images += image;
    }
    return bytes + images;
}

QByteArray Make(const QString &suffix, const QList<Picture> &pictures)
{
    if (suffix == "ico"_L1)
        return IconFile(pictures);
    if (pictures.size() != 1)
        Fail(u"only an icon holds several pictures"_s);
    if (suffix == "svg"_L1)
        return pictures.first().drawing;
    if (suffix == "png"_L1)
        return Encode(Render(pictures.first(), QImage::Format_ARGB32), "png");
    if (suffix == "jpg"_L1 || suffix == "bmp"_L1)
        return Encode(Render(pictures.first(), QImage::Format_RGB32), suffix.toLatin1().constData());
    Fail(u"\"%1\" files are not made here"_s.arg(suffix));
}

void Run(const QStringList &arguments)
{
    if (arguments.size() < 5)
        Fail(u"usage: mkassets PALETTE DRAWING OUT VARIANT:SIZE..."_s);
    const QSet<QString> palette = ReadPalette(arguments[1]);
    const QString &out = arguments[3];
    QList<Picture> pictures;
    for (const QString &argument : arguments.mid(4))
        pictures << ReadPicture(argument, arguments[2], palette);
    const QByteArray bytes = Make(QFileInfo(out).suffix(), pictures);
    QSaveFile file(out);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        Fail(u"%1: %2"_s.arg(out, file.errorString()));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    try {
        Run(QCoreApplication::arguments());
    } catch (const std::exception &error) {
        std::fprintf(stderr, "mkassets: %s\n", error.what());
        return 1;
    }
    return 0;
}

// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// Turns a drawing (SVG) into a shipped picture:
//
//   mkassets PALETTE DRAWING VARIANT OUT WIDTHxHEIGHT     one .jpg, .bmp or .png
//   mkassets PALETTE DRAWING VARIANT OUT.ico SIZE...      one icon with these square sizes, largest last
//
// A drawing holds several pictures that share their parts: an element with the attribute data-bild="05 06" belongs
// to the variants "05" and "06" alone, one without it to all. Colours come from the palette, or the run fails.
#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSet>
#include <QSvgRenderer>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <QtEndian>

#include <cstdio>
#include <stdexcept>

namespace {

constexpr int JpegQuality = 90;

[[noreturn]] void Fail(const QString &text)
{
    throw std::runtime_error(text.toStdString());
}

QByteArray ReadFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        Fail(QStringLiteral("%1: %2").arg(path, file.errorString()));
    }
    return file.readAll();
}

QSet<QString> ReadPalette(const QString &path)
{
    static const QRegularExpression colour(QStringLiteral("#[0-9A-Fa-f]{6}\\b"));
    QSet<QString> palette;
    auto matches = colour.globalMatch(QString::fromUtf8(ReadFile(path)));
    while (matches.hasNext()) {
        palette.insert(matches.next().captured().toUpper());
    }
    return palette;
}

// The colour values that one element names, in attributes or in a style.
QStringList PaintValues(const QXmlStreamAttributes &attributes)
{
    static const QStringList paints{QStringLiteral("fill"), QStringLiteral("stroke"), QStringLiteral("stop-color")};
    QStringList values;
    for (const auto &attribute : attributes) {
        if (paints.contains(attribute.qualifiedName().toString())) {
            values << attribute.value().toString();
        } else if (attribute.qualifiedName() == QLatin1String("style")) {
            for (const QString &entry : attribute.value().toString().split(u';', Qt::SkipEmptyParts)) {
                const qsizetype colon = entry.indexOf(u':');
                if (colon > 0 && paints.contains(entry.left(colon).trimmed())) {
                    values << entry.mid(colon + 1).trimmed();
                }
            }
        }
    }
    return values;
}

bool MayPaint(const QString &value, const QSet<QString> &palette)
{
    return value == QLatin1String("none") || value.startsWith(QLatin1String("url(#")) ||
           palette.contains(value.toUpper());
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
            for (const QString &value : PaintValues(attributes)) {
                if (!MayPaint(value, palette)) {
                    Fail(QStringLiteral("%1:%2: %3 is not in the palette").arg(path).arg(in.lineNumber()).arg(value));
                }
            }
            if (attributes.hasAttribute(QLatin1String("data-bild"))) {
                const QStringList variants =
                    attributes.value(QLatin1String("data-bild")).toString().split(u' ', Qt::SkipEmptyParts);
                if (!variants.contains(variant)) {
                    in.skipCurrentElement();
                    continue;
                }
                seen = true;
            }
        }
        if (!in.hasError()) {
            out.writeCurrentToken(in);
        }
    }
    if (in.hasError()) {
        Fail(QStringLiteral("%1:%2: %3").arg(path).arg(in.lineNumber()).arg(in.errorString()));
    }
    if (!seen && variant != QLatin1String("-")) {
        Fail(QStringLiteral("%1: nothing in it belongs to \"%2\"").arg(path, variant));
    }
    return picked;
}

QImage Render(QSvgRenderer &drawing, QSize size, QImage::Format format)
{
    QImage image(size, format);
    image.fill(format == QImage::Format_RGB32 ? Qt::white : Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
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
    if (!writer.write(image)) {
        Fail(writer.errorString());
    }
    return bytes;
}

template <typename T>
void Append(QByteArray &bytes, T value)
{
    const T little = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

// An icon file whose pictures are all stored as PNG.
QByteArray IconFile(QSvgRenderer &drawing, const QList<int> &sizes)
{
    constexpr int headerSize = 6;
    constexpr int entrySize = 16;
    QByteArray directory;
    QByteArray pictures;
    Append<quint16>(directory, 0);
    Append<quint16>(directory, 1); // an icon, no cursor
    Append<quint16>(directory, static_cast<quint16>(sizes.size()));
    for (const int size : sizes) {
        const QByteArray png = Encode(Render(drawing, {size, size}, QImage::Format_ARGB32), "png");
        const auto side = static_cast<quint8>(size == 256 ? 0 : size); // 0 stands for 256
        Append<quint8>(directory, side);
        Append<quint8>(directory, side);
        Append<quint16>(directory, 0); // no colour table
        Append<quint16>(directory, 1); // planes
        Append<quint16>(directory, 32); // bits per pixel
        Append<quint32>(directory, static_cast<quint32>(png.size()));
        Append<quint32>(directory,
                        static_cast<quint32>(headerSize + entrySize * sizes.size() + pictures.size()));
        pictures += png;
    }
    return directory + pictures;
}

QByteArray Make(QSvgRenderer &drawing, const QString &out, const QStringList &sizes)
{
    if (out.endsWith(QLatin1String(".ico"))) {
        QList<int> sides;
        for (const QString &size : sizes) {
            sides << size.toInt();
            if (sides.last() < 1 || sides.last() > 256) {
                Fail(QStringLiteral("an icon has no size %1").arg(size));
            }
        }
        return IconFile(drawing, sides);
    }
    const QStringList sides = sizes.value(0).split(u'x');
    const QSize size(sides.value(0).toInt(), sides.value(1).toInt());
    if (sizes.size() != 1 || size.isEmpty()) {
        Fail(QStringLiteral("no size: %1").arg(sizes.join(u' ')));
    }
    if (out.endsWith(QLatin1String(".png"))) {
        return Encode(Render(drawing, size, QImage::Format_ARGB32), "png");
    }
    const char *format = out.endsWith(QLatin1String(".bmp")) ? "bmp" : "jpg";
    return Encode(Render(drawing, size, QImage::Format_RGB32), format);
}

void Run(const QStringList &arguments)
{
    if (arguments.size() < 6) {
        Fail(QStringLiteral("usage: mkassets PALETTE DRAWING VARIANT OUT SIZE..."));
    }
    const QString &drawingPath = arguments[2];
    const QByteArray picked = PickVariant(drawingPath, arguments[3], ReadPalette(arguments[1]));
    QSvgRenderer drawing;
    if (!drawing.load(picked)) {
        Fail(QStringLiteral("%1: not a drawing").arg(drawingPath));
    }
    const QByteArray bytes = Make(drawing, arguments[4], arguments.mid(5));
    QSaveFile file(arguments[4]);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        Fail(QStringLiteral("%1: %2").arg(arguments[4], file.errorString()));
    }
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

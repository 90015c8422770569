// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QRasterWindow>
#include <QUrl>

#include <cstdio>

namespace {

void Sagen(const char *wort)
{
    std::puts(wort);
    std::fflush(stdout);
}

// A small window, over all others, from which a file can be dragged.
class Quelle final : public QRasterWindow
{
public:
    explicit Quelle(const QString &datei) : datei_(datei)
    {
        setFlags(Qt::BypassWindowManagerHint); // it never takes the keyboard
        setGeometry(0, 0, 40, 40);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(QRect(QPoint(), size()), Qt::yellow);
        Sagen("bereit");
    }

    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (!(event->buttons() & Qt::LeftButton))
            return;
        auto *mime = new QMimeData; // the drag's
        mime->setUrls({QUrl::fromLocalFile(datei_)});
        auto *zug = new QDrag(this); // deletes itself
        zug->setMimeData(mime);
        connect(zug, &QDrag::actionChanged, this,
                [](Qt::DropAction wie) { Sagen(wie == Qt::IgnoreAction ? "unerwuenscht" : "erwuenscht"); });
        Sagen("zieht");
        Sagen(zug->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction) == Qt::CopyAction ? "abgelegt"
                                                                                           : "nichts");
    }

private:
    QString datei_;
};

} // namespace

// Another program that a file is dragged from: "ziehquelle DATEI". Tells on its standard output how far it
// is: "bereit" when its window can be seen, "zieht", "erwuenscht" and "unerwuenscht" as what lies under the
// mouse takes the file or not, and "abgelegt" or "nichts" in the end.
int main(int argc, char **argv)
{
    const QGuiApplication programm(argc, argv);
    Quelle quelle(QGuiApplication::arguments().value(1));
    quelle.show();
    return QGuiApplication::exec();
}

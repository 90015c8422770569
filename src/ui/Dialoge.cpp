// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Dialoge.h"

#include "Dateisymbole.h"
#include "Texttaste.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString Ausfuehren(QFileDialog &fenster, const DateiDialog &dialog)
{
    static Dateisymbole symbole; // the dialog's model asks it as long as the dialog lives
    fenster.setIconProvider(&symbole);
    fenster.setObjectName(u"CommonDialog1"_s);
    fenster.setNameFilters(Dateitypen(dialog));
    fenster.setDefaultSuffix(dialog.endung);
    if (!dialog.vorgabe.isEmpty())
        fenster.selectFile(QDir(dialog.verzeichnis).filePath(dialog.vorgabe));
    // Sizes and dates are shown whole; the desktop's own dialog has no such table.
    if (auto *tabelle = fenster.findChild<QTreeView *>(u"treeView"_s))
        tabelle->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    // Room for the table and a score of files.
    const QFontMetrics schrift = fenster.fontMetrics();
    fenster.resize(QSize(schrift.averageCharWidth() * 150, schrift.lineSpacing() * 32)
                       .boundedTo(fenster.screen()->availableGeometry().size() * 9 / 10));
    if (fenster.exec() != QDialog::Accepted)
        return {};
    return QDir::toNativeSeparators(fenster.selectedFiles().value(0));
}

// The font dialog finds a font's style by name only and takes any other style where the font bears no name.
// Of the styles that fit, the shortest name is the plain one ("Bold", not "Condensed Bold"). A family that
// stands for another ("Sans Serif") may lack that style: the dialog then opens on the other.
QFont MitStilnamen(QFont schrift)
{
    const QString familie = QFontInfo(schrift).family();
    QString gewaehlt;
    for (const QString &stil : QFontDatabase::styles(familie)) {
        const QFont probe = QFontDatabase::font(familie, stil, schrift.pointSize());
        const bool passt = probe.weight() == schrift.weight() && probe.italic() == schrift.italic();
        if (passt && (gewaehlt.isEmpty() || stil.size() < gewaehlt.size()))
            gewaehlt = stil;
    }
    if (!QFontDatabase::styles(schrift.family()).contains(gewaehlt))
        schrift.setFamily(familie);
    schrift.setStyleName(gewaehlt);
    return schrift;
}

// The toolkit's font dialog has no colour: a row below it adds one.
class SchriftFenster final : public QDialog
{
public:
    SchriftFenster(const Schriftwahl &vorgabe, QWidget *parent)
        : QDialog(parent),
          vorgabe_(vorgabe.font),
          farbe_(vorgabe.farbe.isValid() ? vorgabe.farbe : QColor(Qt::black))
    {
        setObjectName(u"Schriftdialog"_s);
        setWindowTitle(tr("Schriftart"));

        schrift_ = new QFontDialog(MitStilnamen(vorgabe.font), this);
        schrift_->setOptions(QFontDialog::DontUseNativeDialog | QFontDialog::NoButtons);
        schrift_->setWindowFlags(Qt::Widget);
        schrift_->setSizeGripEnabled(false); // it would stand in the middle of the window
        anfang_ = schrift_->currentFont();
        // Enter and Escape in the inner dialog close the whole.
        connect(schrift_, &QDialog::accepted, this, &QDialog::accept);
        connect(schrift_, &QDialog::rejected, this, &QDialog::reject);
        schrift_->installEventFilter(this);

        farbknopf_ = new QPushButton(u"&Farbe …"_s, this);
        farbknopf_->setObjectName(u"Farbknopf"_s);
        farbknopf_->setAutoDefault(false);
        connect(farbknopf_, &QPushButton::clicked, this, [this] { FarbeWaehlen(); });

        auto *knoepfe = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
        connect(knoepfe, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(knoepfe, &QDialogButtonBox::rejected, this, &QDialog::reject);

        knoepfe->button(QDialogButtonBox::Ok)->setProperty("leitend", true);

        auto *unten = new QHBoxLayout;
        unten->addWidget(farbknopf_);
        unten->addStretch();
        unten->addWidget(knoepfe);
        auto *alles = new QVBoxLayout(this);
        alles->addWidget(schrift_);
        alles->addLayout(unten);
        FarbeZeigen();
        // The toolkit would take two thirds of a low screen, with three lines of each list.
        resize(sizeHint().boundedTo(screen()->availableGeometry().size() * 9 / 10));
    }

    Schriftwahl Wahl() const
    {
        // What is not changed stays as it was, not as the dialog shows it: a family that is not installed, or
        // that no text has named, keeps its name or goes without.
        const QFont jetzt = schrift_->currentFont();
        QFont schrift = vorgabe_;
        if (jetzt.family() != anfang_.family())
            schrift.setFamily(jetzt.family());
        if (jetzt.pointSizeF() != anfang_.pointSizeF())
            schrift.setPointSizeF(jetzt.pointSizeF());
        if (jetzt.weight() != anfang_.weight())
            schrift.setWeight(jetzt.weight());
        if (jetzt.italic() != anfang_.italic())
            schrift.setItalic(jetzt.italic());
        schrift.setStrikeOut(jetzt.strikeOut());
        schrift.setUnderline(jetzt.underline());
        // A style name would win over bold and italic when they are set later.
        schrift.setStyleName({});
        return {schrift, farbe_};
    }

protected:
    // The lists are lower now than they were when the dialog rolled them to what is chosen.
    void showEvent(QShowEvent *event) override
    {
        QDialog::showEvent(event);
        for (QListView *liste : schrift_->findChildren<QListView *>())
            liste->scrollTo(liste->currentIndex(), QAbstractItemView::PositionAtCenter);
    }

    // What a field does not do with Enter itself, the inner dialog would swallow.
    bool eventFilter(QObject *objekt, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress && IstEingabetaste(static_cast<const QKeyEvent &>(*event))) {
            accept();
            return true;
        }
        return QDialog::eventFilter(objekt, event);
    }

private:
    void FarbeWaehlen()
    {
        const QColor neu = QColorDialog::getColor(farbe_, this, u"Schriftfarbe"_s);
        if (neu.isValid())
            farbe_ = neu;
        FarbeZeigen();
    }

    void FarbeZeigen()
    {
        // Black on a dark desktop, or white on a light one, is seen by its outline.
        const double dichte = devicePixelRatioF();
        QPixmap muster(farbknopf_->iconSize() * dichte);
        muster.setDevicePixelRatio(dichte);
        muster.fill(Qt::transparent);
        QPainter maler(&muster);
        maler.setRenderHint(QPainter::Antialiasing);
        maler.setPen(palette().color(QPalette::ButtonText));
        maler.setBrush(farbe_);
        maler.drawRoundedRect(QRectF({}, QSizeF(farbknopf_->iconSize())).adjusted(0.5, 0.5, -0.5, -0.5), 3,
                              3);
        maler.end();
        farbknopf_->setIcon(muster);
        farbknopf_->setAccessibleName(u"Schriftfarbe "_s + farbe_.name());
    }

    QFont vorgabe_;
    QFont anfang_; // what the dialog makes of it
    QColor farbe_;
    QFontDialog *schrift_ = nullptr;
    QPushButton *farbknopf_ = nullptr;
};

} // namespace

QString DialogeFenster::DateiOeffnen(const DateiDialog &dialog)
{
    QFileDialog fenster(QApplication::activeWindow(), dialog.titel, dialog.verzeichnis);
    fenster.setAcceptMode(QFileDialog::AcceptOpen);
    fenster.setFileMode(QFileDialog::ExistingFile);
    return Ausfuehren(fenster, dialog);
}

QString DialogeFenster::DateiSpeichern(const DateiDialog &dialog)
{
    QFileDialog fenster(QApplication::activeWindow(), dialog.titel, dialog.verzeichnis);
    fenster.setAcceptMode(QFileDialog::AcceptSave);
    fenster.setFileMode(QFileDialog::AnyFile);
    fenster.setOption(QFileDialog::DontConfirmOverwrite, !dialog.ueberschreibenFragen);
    return Ausfuehren(fenster, dialog);
}

std::optional<Schriftwahl> DialogeFenster::SchriftWaehlen(const Schriftwahl &vorgabe)
{
    SchriftFenster fenster(vorgabe, QApplication::activeWindow());
    if (fenster.exec() != QDialog::Accepted)
        return std::nullopt;
    return fenster.Wahl();
}

DateiDialog KarteiDialog(const QString &titel, const QString &verzeichnis)
{
    return {.titel = titel,
            .filter = u"Lerndateien (*.pzb)|*.pzb"_s,
            .verzeichnis = verzeichnis,
            .endung = u"pzb"_s};
}

QString ToolkitFilter(const QString &filter)
{
    static const QRegularExpression Klammer(u"\\s*\\([^()]*\\)\\s*$"_s);
    const QStringList teile = filter.split(u'|');
    QStringList ergebnis;
    for (qsizetype i = 0; i + 1 < teile.size(); i += 2) {
        QString name = teile[i];
        name.remove(Klammer);
        QString muster = teile[i + 1];
        muster.replace(u';', u' ');
        ergebnis << name + u" ("_s + muster.simplified() + u')';
    }
    return ergebnis.join(u";;"_s);
}

QStringList Dateitypen(const DateiDialog &dialog)
{
    QStringList typen = ToolkitFilter(dialog.filter).split(u";;"_s, Qt::SkipEmptyParts);
    typen << ToolkitFilter(dialog.weitere).split(u";;"_s, Qt::SkipEmptyParts);
    if (dialog.alle.isEmpty())
        return typen;
    std::ranges::reverse(typen);
    const QStringList teile = dialog.filter.split(u'|');
    QStringList muster;
    for (qsizetype i = teile.size() - 1; i > 0; i -= 2)
        muster << teile[i];
    typen.prepend(u"%1 (%2)"_s.arg(dialog.alle, muster.join(u' ')));
    return typen;
}

} // namespace paukfix

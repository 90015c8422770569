// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Themaausfiltern.h"

#include "Farben.h"
#include "Fensterbau.h"
#include "Kurztext.h"
#include "Medienwahl.h"
#include "NeueKartei.h"
#include "Texttaste.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QStyledItemDelegate>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Draws a topic in one line, its middle left out where it is too long; what is chosen in a list without the
// keyboard is quieter.
class Themenmaler final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant &wert, const QLocale &land) const override
    {
        const QString text = wert.toString();
        if (text.size() <= 2 * KurztextLaenge)
            return QStyledItemDelegate::displayText(text, land);
        QString ende = text.right(KurztextLaenge);
        if (ende.front().isLowSurrogate())
            ende.remove(0, 1);
        return QStyledItemDelegate::displayText(Kurztext(text) + ende, land);
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return {0, QStyledItemDelegate::sizeHint(option, index).height()}; // as wide as the list
    }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = Qt::ElideMiddle;
        if (option->widget && option->widget->hasFocus())
            return;
        QPalette &farben = option->palette;
        farben.setColor(QPalette::Highlight, Farben::Getoent(farben.color(QPalette::Highlight),
                                                             farben.color(QPalette::Base), 0.2));
        farben.setColor(QPalette::HighlightedText, farben.color(QPalette::Text));
    }
};

} // namespace

Themaausfiltern::Themaausfiltern(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, u"Themaausfiltern"_s, u"Thema ausfiltern"_s, u"Thema ausfiltern"_s,
                      parent)
{
    Erklaeren({u"Durch diese Funktion wird eine neue Datei erstellt. "_s,
               u"Sie können auswählen, welche der vorhandenen Themen übernommen werden. "_s});
    auto *listen = new QGridLayout;
    listen->setVerticalSpacing(fontMetrics().height() / 4);
    Felder()->addLayout(listen, Felder()->rowCount(), 0, 1, 3);
    lstÜbernehmen_ =
        ListeBauen(listen, u"&übernehmen:"_s, u"lstÜbernehmen"_s, [this] { lstÜbernehmen_Click(); });
    lstNübernehmen_ =
        ListeBauen(listen, u"&nicht übernehmen:"_s, u"lstNübernehmen"_s, [this] { lstNübernehmen_Click(); });
    lblDateiname_ = DateinameBauen(u"Hier bitte den Namen der zu erstellenden Datei eingeben"_s,
                                   [this] { cmdDateiname_Click(); });
    chkMedien_ = MedienBauen();
    HinweisBauen(u"Hinweis: Das Feld \"Thema\" können Sie beim ändern der Karten erfassen."_s);
    HinweisBauen(u"Leertaste oder Eingabe: das gewählte Thema wechselt die Liste."_s);
    KnoepfeBauen([this] { cmdOK_Click(); });
    Form_Load();
}

QListWidget *Themaausfiltern::ListeBauen(QGridLayout *listen, const QString &text, const QString &name,
                                         const std::function<void()> &click)
{
    auto *liste = Benannt(new QListWidget(this), name, QString(text).remove(u'&').remove(u':'));
    liste->setToolTip(u"zum Wechseln das Thema klicken"_s);
    liste->setUniformItemSizes(true);
    liste->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    liste->setItemDelegate(new Themenmaler(liste));
    liste->viewport()->installEventFilter(this);
    liste->installEventFilter(this);
    connect(liste, &QListWidget::itemClicked, this, click);
    const int spalte = listen->columnCount() - (listen->count() == 0 ? 1 : 0);
    listen->addWidget(Beschriftung(text, liste, this), 0, spalte);
    listen->addWidget(liste, 1, spalte);
    return liste;
}

void Themaausfiltern::Form_Load()
{
    // Without the topics the new file would be one without cards.
    SetOKErlaubt(Step(Dienst().meldungen, FehlerKontext(), [&] {
        CardStore &store = Store();
        lstÜbernehmen_->addItems(Themen(store.Karten(), store.Felder().Picture_name[8], &zahlen_));
        lstÜbernehmen_->setCurrentRow(0);
        // Which of them the chosen topics name is found out when they are copied.
        if (!MediaNames(store.Karten()).isEmpty())
            MedienAnbieten(chkMedien_, std::nullopt, lblDateiname_);
    }));
    AuswahlZeigen();
    lstÜbernehmen_->setFocus();
}

void Themaausfiltern::AuswahlZeigen()
{
    const auto summe = [this](const QListWidget &liste) {
        int karten = 0;
        for (int i = 0; i < liste.count(); ++i)
            karten += zahlen_.value(liste.item(i)->text());
        return karten;
    };
    const int aus = summe(*lstNübernehmen_);
    VorhabenZeigen(Kommen(summe(*lstÜbernehmen_)) + u" in die neue Datei; "_s +
                   (aus == 0 ? u"keine bleibt aus."_s
                             : KartenText(aus) + (aus == 1 ? u" bleibt aus."_s : u" bleiben aus."_s)));
}

void Themaausfiltern::lstÜbernehmen_Click()
{
    Wechseln(*lstÜbernehmen_, *lstNübernehmen_);
}

void Themaausfiltern::lstNübernehmen_Click()
{
    Wechseln(*lstNübernehmen_, *lstÜbernehmen_);
}

void Themaausfiltern::Wechseln(QListWidget &von, QListWidget &nach)
{
    QListWidgetItem *eintrag = von.takeItem(von.currentRow());
    if (!eintrag)
        return;
    nach.addItem(eintrag);
    if (nach.currentRow() < 0)
        nach.setCurrentRow(0);
    AuswahlZeigen();
}

bool Themaausfiltern::eventFilter(QObject *objekt, QEvent *event)
{
    // The second click of a double click would meet the topic that has moved up.
    if (event->type() == QEvent::MouseButtonDblClick &&
        (objekt == lstÜbernehmen_->viewport() || objekt == lstNübernehmen_->viewport()))
        return true;
    if (event->type() != QEvent::KeyPress || (objekt != lstÜbernehmen_ && objekt != lstNübernehmen_))
        return Werkzeugfenster::eventFilter(objekt, event);
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    if (taste.key() != Qt::Key_Space && !IstEingabetaste(taste))
        return Werkzeugfenster::eventFilter(objekt, event);
    if (objekt == lstÜbernehmen_)
        lstÜbernehmen_Click();
    else
        lstNübernehmen_Click();
    return true;
}

void Themaausfiltern::cmdDateiname_Click()
{
    KarteinameUebernehmen(lblDateiname_,
                          Ziel().Waehlen(KarteiDialog(u"Themaausfiltern"_s, Store().KarteiPfad)));
}

void Themaausfiltern::cmdOK_Click()
{
    QStringList uebernehmen;
    for (int i = 0; i < lstÜbernehmen_->count(); ++i)
        uebernehmen << lstÜbernehmen_->item(i)->text();
    NeueKarteiErstellen(lblDateiname_, [&](const Werkbank &bank, const QString &ziel) {
        return ThemenAusfiltern(bank, ziel, uebernehmen, chkMedien_->Wahl());
    });
}

} // namespace paukfix

// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardStore.h"

#include "CardFile.h"

#include <QDir>

#include <algorithm>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

CardFieldHandles BindFields(CardRecordset &karten)
{
    CardFieldHandles felder;
    felder.FrageNr = karten[u"FrageNr"];
    felder.FachNr = karten[u"FachNr"];
    felder.FachLfdNr = karten[u"FachLfdNr"];
    felder.Antworttyp = karten[u"Antworttyp"];
    for (std::size_t i = 0; i < felder.Picture_name.size(); ++i)
        felder.Picture_name[i] = karten[u"Picture_%1_name"_s.arg(i + 1)];
    felder.PictureTop = karten[u"PictureTop"];
    felder.PictureLeft = karten[u"PictureLeft"];
    felder.PictureHeight = karten[u"PictureHeight"];
    felder.PictureWidth = karten[u"PictureWidth"];
    felder.Frage = karten[u"Frage"];
    felder.Frage_Klartext = karten[u"Frage_Klartext"];
    for (std::size_t i = 0; i < felder.Antwort.size(); ++i)
        felder.Antwort[i] = karten[u"Antwort_%1"_s.arg(i + 1)];
    for (std::size_t i = 0; i < felder.Antwort_ch.size(); ++i)
        felder.Antwort_ch[i] = karten[u"Antwort_ch_%1"_s.arg(i + 1)];
    for (std::size_t i = 0; i < felder.Antwort_Klartext.size(); ++i)
        felder.Antwort_Klartext[i] = karten[u"Antwort_%1_Klartext"_s.arg(i + 1)];
    return felder;
}

} // namespace

struct CardStore::Offen
{
    explicit Offen(std::unique_ptr<CardFile> neue)
        : datei(std::move(neue)), karten(*datei), felder(BindFields(karten))
    {
        karten.SetIndex(u"BoxKey");
    }

    std::unique_ptr<CardFile> datei;
    CardRecordset karten;
    CardFieldHandles felder;
};

CardStore::CardStore() = default;

CardStore::~CardStore()
{
    CloseCardFile(); // the history follows the file until then
}

void CardStore::Uebernehmen(std::unique_ptr<CardFile> datei)
{
    CloseCardFile();
    Nehmen(std::make_unique<Offen>(std::move(datei)));
}

void CardStore::ZumFuellen(std::unique_ptr<CardFile> datei)
{
    CloseCardFile();
    offen_ = std::make_unique<Offen>(std::move(datei));
}

void CardStore::Nehmen(std::unique_ptr<Offen> neue)
{
    offen_ = std::move(neue);
    offen_->datei->beforeChange = [this] { VorAenderung(); };
    schritte.Folgen(*offen_->datei);
}

void CardStore::Fortsetzen(std::unique_ptr<CardFile> datei, const Sitzung &bisher, bool dieselben)
{
    auto neue = std::make_unique<Offen>(std::move(datei));
    Faecher gezaehlt;
    const qint16 nummer = std::max(HighestCardNumber, gezaehlt.Zaehlen(neue->karten));
    if (offen_)
        neue->karten.SetIndex(offen_->karten.Index());
    Sitzung behalten = bisher;
    const SchritteBewahren bewahren(*this);
    if (dieselben)
        schritte.abdruck_ = neue->datei->ReadState();
    CloseCardFile();
    Nehmen(std::move(neue));
    FachInfo = gezaehlt;
    HighestCardNumber = nummer;
    sitzung = std::move(behalten);
    FehlerStatus = 0;
}

void CardStore::CloseCardFile() noexcept
{
    schritte.Loslassen();
    offen_.reset();
    FehlerStatus = 1;
    HighestCardNumber = 0;
    FachInfo.Leeren();
    sitzung.Leeren();
}

bool CardStore::NurAnsehen() const
{
    return offen_ && offen_->datei->IsSnapshot();
}

QString CardStore::OffenerPfad() const
{
    return offen_ ? offen_->datei->Path() : QString();
}

CardStore::Offen &CardStore::Offene()
{
    if (!offen_)
        throw StoreError(Fehler::NichtsOffen, u"Es ist keine Kartei geöffnet."_s);
    return *offen_;
}

CardFile &CardStore::Datei()
{
    return *Offene().datei;
}

CardRecordset &CardStore::Karten()
{
    return Offene().karten;
}

CardFieldHandles &CardStore::Felder()
{
    return Offene().felder;
}

QString CardStore::CardPath(const QString &fileName) const
{
    return QDir::toNativeSeparators(KarteiPfad) + QDir::separator() + fileName;
}

} // namespace paukfix

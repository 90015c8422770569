// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardStore.h"

#include "CardFile.h"
#include "CardFileCheck.h"
#include "FreshFile.h"
#include "JetConversion.h"
#include "JetSource.h"
#include "Repair.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <limits>

namespace {

// The hourglass as long as it lives; the default pointer comes back whatever happens.
class SanduhrAn
{
public:
    explicit SanduhrAn(Meldungen &meldungen) : meldungen_(meldungen) { meldungen_.Sanduhr(true); }

    SanduhrAn(const SanduhrAn &) = delete;
    SanduhrAn &operator=(const SanduhrAn &) = delete;

    ~SanduhrAn() { meldungen_.Sanduhr(false); }

private:
    Meldungen &meldungen_;
};

void BindFields(CardRecordset &karten, CardFieldHandles &felder)
{
    felder.FrageNr = karten[u"FrageNr"];
    felder.FachNr = karten[u"FachNr"];
    felder.FachLfdNr = karten[u"FachLfdNr"];
    felder.Antworttyp = karten[u"Antworttyp"];
    for (std::size_t i = 0; i < felder.Picture_name.size(); ++i)
        felder.Picture_name[i] = karten[QStringLiteral("Picture_%1_name").arg(i + 1)];
    felder.PictureTop = karten[u"PictureTop"];
    felder.PictureLeft = karten[u"PictureLeft"];
    felder.PictureHeight = karten[u"PictureHeight"];
    felder.PictureWidth = karten[u"PictureWidth"];
    felder.Frage = karten[u"Frage"];
    felder.Frage_Klartext = karten[u"Frage_Klartext"];
    for (std::size_t i = 0; i < felder.Antwort.size(); ++i)
        felder.Antwort[i] = karten[QStringLiteral("Antwort_%1").arg(i + 1)];
    for (std::size_t i = 0; i < felder.Antwort_ch.size(); ++i)
        felder.Antwort_ch[i] = karten[QStringLiteral("Antwort_ch_%1").arg(i + 1)];
    for (std::size_t i = 0; i < felder.Antwort_Klartext.size(); ++i)
        felder.Antwort_Klartext[i] = karten[QStringLiteral("Antwort_%1_Klartext").arg(i + 1)];
}

// The compartment of a card. A compartment is one of seven: 2.5 is none, and seeking by it would find no
// card.
std::size_t FachOf(const Field &fachNr)
{
    const double fach = fachNr.Number();
    if (!(fach >= FachNeu && fach <= FachErledigt) || fach != static_cast<int>(fach))
        throw StoreError(
            Fehler::IndexAusserhalb,
            QStringLiteral("Eine Karte liegt in Fach %1; es gibt nur die Fächer 0 bis 6.").arg(fach));
    return static_cast<std::size_t>(fach);
}

// A sound file, but more cards than a compartment can count.
class TooManyCards : public StoreError
{
public:
    explicit TooManyCards(std::size_t compartment)
        : StoreError(Fehler::Ueberlauf, QStringLiteral("In Fach %1 liegen mehr als %2 Karten.")
                                            .arg(compartment)
                                            .arg(std::numeric_limits<qint16>::max()))
    {
    }
};

// What the repair can mend: damage of the file, and cards with a place or a number that no card can have.
bool IsDamage(const StoreError &error)
{
    switch (error.Number()) {
    case Fehler::Beschaedigt:
    case Fehler::IndexAusserhalb:
    case Fehler::TypUnvertraeglich:
    case Fehler::NullUngueltig:
        return true;
    case Fehler::Ueberlauf:
        return dynamic_cast<const TooManyCards *>(&error) == nullptr;
    default:
        return false;
    }
}

} // namespace

CardStore::CardStore(Meldungen &meldungen, const Uhr &uhr) : meldungen_(meldungen), uhr_(uhr) {}

CardStore::~CardStore() = default;

QString CardStore::CardPath(const QString &fileName) const
{
    return QDir::toNativeSeparators(KarteiPfad) + QDir::separator() + fileName;
}

CardRecordset &CardStore::Karten()
{
    if (!recordset_)
        throw StoreError(Fehler::NichtsOffen, QStringLiteral("Es ist keine Kartei geöffnet."));
    return *recordset_;
}

CardFieldHandles &CardStore::Felder()
{
    Karten();
    return felder_;
}

void CardStore::CreateCardFile(QString &fileName)
{
    if (fileName.isEmpty())
        return;
    const SanduhrAn sanduhr(meldungen_);
    const QString path = CardPath(fileName);
    const bool isOpenOne = file_ && SameFile(path, file_->Path());
    CheckNameLength(path);
    if (!isOpenOne)
        CheckReplaceable(path); // another program may be learning with it
    FreshFile fresh(path);
    fresh.Make(CardFile::Create);
    if (isOpenOne)
        CloseCardFile(); // a card file is never unlinked under the engine
    fresh.TakePlace();
    OpenCardFile(fileName);
}

void CardStore::OpenCardFile(QString &fileName)
{
    const SanduhrAn sanduhr(meldungen_);
    meldungen_.SetTitel(QStringLiteral("Merkkasten"));
    CloseCardFile();
    ResetBoxTable();
    try {
        OpenChecked(CardPath(fileName));
    } catch (const std::exception &error) {
        const auto *known = dynamic_cast<const StoreError *>(&error);
        CloseCardFile();
        FachInfo = FachStartwerte();
        HighestCardNumber = 0;
        ClearSessionTally();
        BoxZeichnen();
        fileName.clear();
        meldungen_.Zeigen(ErrorText(error) + QStringLiteral(" Fcode: ") +
                          QString::number(known ? known->Number() : Fehler::ZuWenigSpeicher));
        return;
    }
    meldungen_.SetTitel(QStringLiteral("Merkkasten (%1)").arg(fileName));
    CurrentFileName = fileName;
    FehlerStatus = 0;
    BoxZeichnen();
    StartSessionTally();
}

void CardStore::OpenChecked(const QString &path)
{
    if (IsJetFile(path))
        Convert(path);
    const auto open = [&] {
        file_ = std::make_unique<CardFile>(path);
        CheckCardFile(
            file_->Database(),
            WartenZeigen(QStringLiteral("Die Kartei wird geprüft."),
                         QStringLiteral("Die Prüfung wurde abgebrochen; die Kartei ist nicht geöffnet.")));
        RemoveRepairLeftovers(path); // the lock is ours: nobody is repairing the file
        ClearFreshFiles(QFileInfo(Resolved(path)).path());
        WalkCards();
    };
    try {
        open();
    } catch (const StoreError &error) {
        CloseCardFile();
        FachInfo = FachStartwerte();
        HighestCardNumber = 0;
        if (!IsDamage(error) ||
            meldungen_.Fragen(QStringLiteral("Diese Datei ist beschädigt Reparaturversuch ?")) !=
                Meldungen::Antwort::Ja)
            throw;
        RepairResult result;
        try {
            result = RepairDatabase(
                path,
                WartenZeigen(QStringLiteral("Die Kartei wird repariert."),
                             QStringLiteral("Die Reparatur wurde abgebrochen; an der Datei wurde nichts "
                                            "geändert.")));
        } catch (const std::exception &failure) {
            const auto *known = dynamic_cast<const StoreError *>(&failure);
            if (known != nullptr && known->Number() == Fehler::Abgebrochen)
                throw;
            meldungen_.Zeigen(QStringLiteral("Datei kann nicht repariert werden !"));
            throw;
        }
        if (!result.summary.isEmpty())
            meldungen_.Zeigen(result.summary);
        meldungen_.Zeigen(QStringLiteral("Datei wurde repariert"));
        open();
    }
}

// What could not be opened afterwards, or not be read, is refused before the question.
void CardStore::Convert(const QString &path)
{
    CheckAccess(path, CardFile::Access::Exclusive);
    CheckConvertible(path);
    const QString name = QFileInfo(path).fileName();
    if (meldungen_.Fragen(
            QStringLiteral("Die Kartei „%1“ hat noch das alte Dateiformat – soll sie umgewandelt werden (die "
                           "alte Datei bleibt als „%2“ daneben erhalten)?")
                .arg(name, QFileInfo(ConversionNames(path).oldFile).fileName())) != Meldungen::Antwort::Ja)
        throw StoreError(
            Fehler::FormatUnbekannt,
            QStringLiteral("Die Datei „%1“ hat noch das alte Dateiformat und wurde nicht umgewandelt.")
                .arg(path));
    const QString report = ConvertJetFile(path);
    if (!report.isEmpty())
        meldungen_.Zeigen(
            QStringLiteral("Nicht jede Karte ließ sich unverändert übernehmen. Was geändert wurde, "
                           "steht in „%1“.")
                .arg(QFileInfo(report).fileName()));
}

void CardStore::WalkCards()
{
    recordset_ = std::make_unique<CardRecordset>(*file_);
    recordset_->SetIndex(u"BoxKey");
    BindFields(*recordset_, felder_);
    int sinceRedraw = 0;
    for (recordset_->MoveFirst(); !recordset_->AtEOF(); recordset_->MoveNext()) {
        HighestCardNumber = std::max(HighestCardNumber, felder_.FrageNr.Integer());
        const std::size_t compartment = FachOf(felder_.FachNr);
        Fach &fach = FachInfo[compartment];
        if (fach.Anzahl == std::numeric_limits<qint16>::max())
            throw TooManyCards(compartment);
        ++fach.Anzahl;
        fach.LfdMax = felder_.FachLfdNr.Integer();
        if (++sinceRedraw > 10) {
            BoxZeichnen();
            sinceRedraw = 0;
        }
    }
}

void CardStore::CloseCardFile() noexcept
{
    FehlerStatus = 1;
    felder_ = {};
    recordset_.reset();
    file_.reset();
}

void CardStore::ResetBoxTable()
{
    FachInfo = FachStartwerte();
    HighestCardNumber = 0;
    BoxZeichnen();
    FlugLinks = 2280;
    FlugOben = 975;
    ErsterAufruf = true;
    CalibrateDelayLoop();
}

void CardStore::StartSessionTally()
{
    Beginn = uhr_.Jetzt();
    RichtigZaehler = 0;
    FalschZaehler = 0;
    for (std::size_t i = 0; i < FachInfo.size(); ++i)
        BegAnz[i] = FachInfo[i].Anzahl;
}

void CardStore::ClearSessionTally() noexcept
{
    Beginn = {};
    RichtigZaehler = 0;
    FalschZaehler = 0;
    BegAnz = {};
}

void CardStore::CalibrateDelayLoop()
{
    // Waits for the beginning of a second, then counts the readings until the next one.
    const qint64 before = uhr_.Sekunde();
    qint64 second = before;
    while (second == before)
        second = uhr_.Sekunde();
    constexpr qint32 Most = std::numeric_limits<qint32>::max();
    LoopsLastSecond = 0;
    while (uhr_.Sekunde() == second) {
        if (LoopsPerSecond < Most)
            ++LoopsPerSecond;
        if (LoopsLastSecond < Most)
            ++LoopsLastSecond;
    }
}

void CardStore::DelayMilliseconds(qint16 ms) const
{
    const auto rounds = static_cast<qint64>(LoopsPerSecond / 1000.0 * ms);
    for (qint64 round = 0; round < rounds; ++round)
        static_cast<void>(uhr_.Sekunde());
}

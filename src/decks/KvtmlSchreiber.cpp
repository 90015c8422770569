// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Deckausgabe.h"
#include "KvtmlQuelle.h"
#include "Mediendatei.h"
#include "RichText.h"
#include "SafeFile.h"
#include "StoreError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QTextDocument>
#include <QUrl>
#include <QXmlStreamWriter>

#include <array>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr double Angekreuzt = 2;

// What XML cannot hold goes; `weg` tells of it.
QString Erlaubt(const QString &text, bool &weg)
{
    QString gut;
    gut.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            gut += c;
            gut += text[++i];
            continue;
        }
        const char16_t code = c.unicode();
        if (c.isSurrogate() || (code < 0x20 && code != u'\t' && code != u'\n') || code >= 0xfffe)
            weg = true;
        else
            gut += c;
    }
    return gut;
}

bool IstFormatiert(const QString &reich)
{
    if (!IsRtf(reich))
        return false;
    QTextDocument dokument;
    SetRichText(dokument, reich);
    QTextDocument klar;
    klar.setPlainText(dokument.toPlainText());
    return ToRtf(dokument) != ToRtf(klar);
}

class Schreiber
{
public:
    Schreiber(QIODevice &datei, QString medien, QString medienname, const Deckausgabe &deck,
              Deckbericht &bericht)
        : xml_(&datei),
          medien_(std::move(medien)),
          medienname_(std::move(medienname)),
          deck_(deck),
          bericht_(bericht)
    {
        xml_.setAutoFormatting(true);
        xml_.setAutoFormattingIndent(2);
    }

    void Schreiben()
    {
        xml_.writeStartDocument();
        xml_.writeDTD(u"<!DOCTYPE kvtml PUBLIC \"kvtml2.dtd\" \"http://edu.kde.org/kvtml/kvtml2.dtd\">"_s);
        xml_.writeStartElement(u"kvtml"_s);
        xml_.writeAttribute(u"version"_s, u"2.0"_s);
        xml_.writeStartElement(u"information"_s);
        Text(u"generator"_s, u"Paukfix"_s);
        Text(u"title"_s, deck_.titel);
        xml_.writeEndElement();
        xml_.writeStartElement(u"identifiers"_s);
        Sprache(u"0"_s, u"Frage"_s);
        Sprache(u"1"_s, u"Antwort"_s);
        xml_.writeEndElement();
        xml_.writeStartElement(u"entries"_s);
        int nummer = 0;
        for (CardRecord satz; deck_.naechste(satz);) {
            Melden(deck_.progress, nummer, deck_.anzahl);
            Eintrag(satz, nummer++);
        }
        xml_.writeEndElement();
        Lektionen();
        xml_.writeEndElement();
        xml_.writeEndDocument();
    }

private:
    void Sprache(const QString &nummer, const QString &name)
    {
        xml_.writeStartElement(u"identifier"_s);
        xml_.writeAttribute(u"id"_s, nummer);
        Text(u"name"_s, name);
        xml_.writeEndElement();
    }

    // White space at the edges of lines is kept only where it is said.
    void Text(const QString &element, const QString &text)
    {
        bool weg = false;
        QString gut = Erlaubt(QString(text).replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n'), weg);
        if (weg)
            bericht_.Melden(Deckrest::Zeichen, gut);
        xml_.writeStartElement(element);
        bool rand = gut != gut.trimmed();
        for (const QStringView zeile : QStringView(gut).split(u'\n'))
            rand |= zeile != zeile.trimmed();
        if (rand)
            xml_.writeAttribute(u"xml:space"_s, u"preserve"_s);
        xml_.writeCharacters(gut);
        xml_.writeEndElement();
    }

    void Eintrag(const CardRecord &satz, int nummer)
    {
        KartenrestMelden(satz, bericht_);
        const std::array reiche{&satz.Antwort_1, &satz.Antwort_2, &satz.Antwort_3, &satz.Antwort_4,
                                &satz.Antwort_5};
        const std::array texte{&satz.Antwort_1_Klartext, &satz.Antwort_2_Klartext, &satz.Antwort_3_Klartext,
                               &satz.Antwort_4_Klartext, &satz.Antwort_5_Klartext};
        const std::array kreuze{satz.Antwort_ch_1, satz.Antwort_ch_2, satz.Antwort_ch_3, satz.Antwort_ch_4,
                                satz.Antwort_ch_5};
        const bool ankreuzen = satz.Antworttyp == Angekreuzt;
        bool formatiert = IstFormatiert(satz.Frage);
        QStringList richtige;
        QStringList falsche;
        for (std::size_t i = 0; i < (ankreuzen ? texte.size() : 1); ++i) {
            formatiert |= IstFormatiert(*reiche[i]);
            if (ankreuzen && texte[i]->isEmpty())
                continue;
            (!ankreuzen || kreuze[i] ? richtige : falsche) << *texte[i];
        }
        if (formatiert)
            bericht_.Melden(Deckrest::Format, satz.Frage_Klartext);
        if (ankreuzen && (richtige.size() != 1 || falsche.isEmpty()))
            bericht_.Melden(Deckrest::MehrereRichtig, satz.Frage_Klartext);
        if (!satz.Picture_9_Name.isEmpty()) {
            if (!lektionen_.contains(satz.Picture_9_Name))
                lektionsfolge_ << satz.Picture_9_Name;
            lektionen_[satz.Picture_9_Name] << nummer;
        }
        xml_.writeStartElement(u"entry"_s);
        xml_.writeAttribute(u"id"_s, QString::number(nummer));
        Uebersetzung(u"0"_s, satz.Frage_Klartext, {}, 0, satz.Picture_1_Name, satz.Picture_6_Name);
        Uebersetzung(u"1"_s, richtige.join(u'\n'), falsche, StufeAusFach(static_cast<int>(satz.FachNr)),
                     satz.Picture_2_Name, satz.Picture_7_Name);
        xml_.writeEndElement();
    }

    void Uebersetzung(const QString &nummer, const QString &text, const QStringList &falsche, int stufe,
                      const QString &bild, const QString &ton)
    {
        xml_.writeStartElement(u"translation"_s);
        xml_.writeAttribute(u"id"_s, nummer);
        Text(u"text"_s, text);
        if (stufe > 0) {
            xml_.writeStartElement(u"grade"_s);
            xml_.writeAttribute(u"fromid"_s, u"0"_s);
            Text(u"currentgrade"_s, QString::number(stufe));
            xml_.writeEndElement();
        }
        if (!falsche.isEmpty()) {
            xml_.writeStartElement(u"multiplechoice"_s);
            for (const QString &wahl : falsche)
                Text(u"choice"_s, wahl);
            xml_.writeEndElement();
        }
        Medium(u"image"_s, bild);
        Medium(u"sound"_s, ton);
        xml_.writeEndElement();
    }

    void Medium(const QString &element, const QString &name)
    {
        const QString pfad = Medienpfad(deck_, name, bericht_);
        if (pfad.isEmpty())
            return;
        const QString adresse =
            medien_.isEmpty() ? QFileInfo(pfad).fileName() : medienname_ + u'/' + Kopiert(pfad);
        Text(element, QString::fromUtf8(QUrl::toPercentEncoding(adresse, "/")));
    }

    // The name of the copy; a file that is there already under it is left alone.
    QString Kopiert(const QString &pfad)
    {
        const auto schon = kopiert_.constFind(pfad);
        if (schon != kopiert_.constEnd())
            return *schon;
        if (!QDir().mkpath(medien_))
            throw StoreError(Fehler::NichtErlaubt,
                             u"Der Ordner „%1“ lässt sich nicht anlegen."_s.arg(medien_));
        QString name = QFileInfo(pfad).fileName();
        for (int nummer = 2; IsNameTaken(medien_ + u'/' + name); ++nummer)
            name = NummerierterName(QFileInfo(pfad).fileName(), nummer);
        CopyFile(pfad, medien_ + u'/' + name);
        kopiert_.insert(pfad, name);
        return name;
    }

    void Lektionen()
    {
        if (lektionsfolge_.isEmpty())
            return;
        xml_.writeStartElement(u"lessons"_s);
        for (const QString &lektion : std::as_const(lektionsfolge_)) {
            xml_.writeStartElement(u"container"_s);
            Text(u"name"_s, lektion);
            Text(u"inpractice"_s, u"true"_s);
            for (const int nummer : std::as_const(lektionen_[lektion])) {
                xml_.writeEmptyElement(u"entry"_s);
                xml_.writeAttribute(u"id"_s, QString::number(nummer));
            }
            xml_.writeEndElement();
        }
        xml_.writeEndElement();
    }

    QXmlStreamWriter xml_;
    QString medien_, medienname_;
    const Deckausgabe &deck_;
    Deckbericht &bericht_;
    QHash<QString, QList<int>> lektionen_;
    QStringList lektionsfolge_;
    QHash<QString, QString> kopiert_; // names by paths
};

} // namespace

void KvtmlSchreiben(const QString &pfad, const QString &medien, const QString &medienname,
                    const Deckausgabe &deck, Deckbericht &bericht)
{
    QFile datei(pfad);
    if (!datei.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        ThrowFileError(EACCES, pfad);
    Schreiber(datei, medien, medienname, deck, bericht).Schreiben();
    if (!datei.flush() || datei.error() != QFileDevice::NoError)
        throw StoreError(
            Fehler::DatentraegerVoll,
            u"Die Datei „%1“ konnte nicht geschrieben werden: %2"_s.arg(pfad, datei.errorString()));
}

} // namespace paukfix

// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anzeige.h"
#include "Programmkopie.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QImage>

#include <algorithm>

using namespace paukfix;

namespace {

// The buses that programs and screen readers talk over.
class Bus
{
public:
    explicit Bus(Anzeige &anzeige)
    {
        QProcessEnvironment &umgebung = anzeige.umgebung;
        sitzung_.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        QByteArray adresse;
        while (!adresse.contains('\n') && sitzung_.waitForReadyRead(20000))
            adresse += sitzung_.readAllStandardOutput();
        if (adresse.trimmed().isEmpty())
            qFatal("no session bus");
        umgebung.insert("DBUS_SESSION_BUS_ADDRESS", adresse.trimmed());
        umgebung.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
        starter_.setProcessEnvironment(umgebung);
        starter_.setStandardErrorFile(QProcess::nullDevice());
        starter_.start("/usr/libexec/at-spi-bus-launcher", {"--launch-immediately"});
        if (!starter_.waitForStarted())
            qFatal("no bus for screen readers");
    }

    Bus(const Bus &) = delete;
    Bus &operator=(const Bus &) = delete;

    ~Bus()
    {
        for (QProcess *prozess : {&starter_, &sitzung_}) {
            prozess->terminate();
            prozess->waitForFinished();
        }
    }

private:
    QProcess sitzung_, starter_;
};

} // namespace

// The built program, read as a screen reader does: what its windows show must be heard.
class VorleseLaufTest : public QObject
{
    Q_OBJECT

private:
    const QString box_ = "Lern-Box", abfrage_ = "Merkkasten Abfrage", editor_ = "Merkkasten Ändern";
    std::unique_ptr<Anzeige> anzeige_;
    std::unique_ptr<Bus> bus_;
    std::unique_ptr<QTemporaryDir> ordner_;
    std::unique_ptr<Lauf> lauf_;

    QString Pfad(const QString &name) const { return ordner_->filePath(name); }

    // Lines of name, description and text of all that the active window shows.
    QString Vorgelesen() const
    {
        QProcess leser;
        leser.setProcessEnvironment(anzeige_->umgebung);
        leser.setStandardErrorFile(QProcess::nullDevice());
        leser.start("/usr/bin/python3", {SourceFile("tests/app/vorlesen.py"), "paukfix"});
        leser.waitForFinished();
        QStringList zeilen = QString::fromUtf8(leser.readAllStandardOutput()).split('\n');
        for (QString &zeile : zeilen)
            zeile = zeile.section('\t', 1); // what it is, is no text of the window
        return zeilen.join('\n');
    }

    // What the active window writes on the screen, as the program itself has painted it: text by text.
    QStringList Gemalt() const
    {
        lauf_->prozess.write("?");
        QByteArray antwort;
        const auto fertig = [&] {
            antwort += lauf_->prozess.readAllStandardOutput();
            return antwort.startsWith(".\n") || antwort.endsWith("\n.\n");
        };
        return QTest::qWaitFor(fertig, 30000) ? QString::fromUtf8(antwort).chopped(2).split('\n')
                                              : QStringList();
    }

    // Painted words that are not heard. A text that is too long for its place is painted with dots at its
    // end; the days below a picture ("31. Okt.") are those of the table beside it.
    static QStringList Unerhoert(const QStringList &gemalt, const QString &gehoert)
    {
        static const QRegularExpression Achsentag(
            "^\\d+\\. (Jan|Feb|März|Apr|Mai|Juni|Juli|Aug|Sept?|Okt|Nov|Dez)\\.?$");
        QStringList stumm;
        for (const QString &text : gemalt) {
            if (Achsentag.match(text).hasMatch())
                continue;
            for (QString wort : text.split(' ')) {
                wort.remove(u'…');
                const bool istWort =
                    std::ranges::any_of(wort, [](QChar zeichen) { return zeichen.isLetterOrNumber(); });
                if (istWort && !gehoert.contains(wort))
                    stumm << wort;
            }
        }
        return stumm;
    }

    // Waits until the window of this title is heard with all that it paints, and with these texts.
    bool Hoerbar(const QString &titel, const QStringList &texte) const
    {
        QString gehoert;
        QStringList fehlt;
        const auto alles = [&] {
            const QStringList gemalt = Gemalt();
            gehoert = Vorgelesen();
            fehlt = gemalt.size() > 1 ? Unerhoert(gemalt, gehoert) : QStringList("(nothing is painted)");
            for (const QString &text : texte)
                if (!gehoert.contains(text))
                    fehlt << text;
            return fehlt.isEmpty() && gehoert.section('\n', 0, 0).contains(titel);
        };
        if (anzeige_->WarteAuf(titel) && QTest::qWaitFor(alles, 30000))
            return true;
        qWarning("%s is not heard of %s, which says:\n%s", qPrintable(fehlt.join(" | ")), qPrintable(titel),
                 qPrintable(gehoert));
        return false;
    }

    // Opens a window by the keys of its menu entry, listens to it, and closes it.
    bool Fenster(const QString &von, const QStringList &tasten, const QString &titel,
                 const QStringList &texte) const
    {
        return anzeige_->Tasten(von, tasten) && Hoerbar(titel, texte) &&
               anzeige_->Schliessen(titel, "Escape");
    }

    void Starten(const QStringList &argumente)
    {
        lauf_ = std::make_unique<Lauf>(*anzeige_, Pfad("paukfix"), argumente);
        lauf_->prozess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QVERIFY(lauf_->Starten());
    }

private slots:

    void initTestCase()
    {
        anzeige_ = std::make_unique<Anzeige>();
        bus_ = std::make_unique<Bus>(*anzeige_);
        anzeige_->umgebung.insert("QT_PLUGIN_PATH", PLUGINS_DIR);
        anzeige_->umgebung.insert("QT_QPA_GENERIC_PLUGINS", "vorlesehilfe");
    }

    void cleanupTestCase()
    {
        bus_.reset();
        anzeige_.reset();
    }

    void init()
    {
        ordner_ = std::make_unique<QTemporaryDir>();
        ProgrammKopieren(ordner_->path(), Vorspann::Nein);
        QImage bild(60, 40, QImage::Format_RGB32);
        bild.fill(Qt::red);
        QVERIFY(bild.save(Pfad("dackel.bmp")));
        CardRecord tipp = MakeCard(17, 0, 1);
        tipp.Frage = tipp.Frage_Klartext = "Wer bellt?";
        tipp.Antwort_1 = tipp.Antwort_1_Klartext = "der Hund";
        tipp.Picture_9_Name = "Haustiere";
        tipp.Picture_1_Name = "dackel.bmp";
        tipp.Picturewidth = 3000;
        tipp.Pictureheight = 2000;
        CardRecord kreuz = MakeCard(23, 2, 1);
        kreuz.Antworttyp = 2;
        kreuz.Antwort_1 = kreuz.Antwort_1_Klartext = "Katze";
        kreuz.Antwort_2 = kreuz.Antwort_2_Klartext = "Esel";
        kreuz.Antwort_ch_2 = true;
        MakeCardFile(Pfad("a.pzb"), {tipp, kreuz, MakeCard(31, 2, 2), MakeCard(41, 6, 1)});
        Starten({Pfad("a.pzb")});
        QVERIFY(lauf_->HatGeoeffnet(Pfad("a.pzb")));
    }

    void cleanup() { lauf_.reset(); }

    // Its pictures have words on them, and tell a story.
    void TheIntro()
    {
        lauf_.reset();
        QFile konfig(Pfad("konfig.dat"));
        QVERIFY(konfig.open(QIODevice::ReadWrite));
        const QByteArray mit = konfig.readAll().replace("Animation=False", "Animation=True");
        QVERIFY(konfig.resize(0) && konfig.seek(0) && konfig.write(mit) == mit.size());
        konfig.close();
        Starten({});
        QVERIFY(Hoerbar("Merkkasten", {"los geht's", "Bild 7 von 7", "Paukfix", "Neu, 1, 2, 3, 4 und 5"}));
        QVERIFY(anzeige_->Tasten("Merkkasten", {"Left", "Left", "Left", "Left"}));
        QVERIFY(Hoerbar("Merkkasten", {"Bild 3 von 7", "falsch", "Fach 1"}));
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return"));
    }

    void TheBox()
    {
        QVERIFY(Hoerbar(box_, {"Fach Neu: 1 von 700 Karten", "Fach 2: 2 von 100 Karten, vollstes Fach",
                               "Fach 5: 0 von 700 Karten", "erledigt: 1", "4 Karten", "Weiter lernen",
                               "a.pzb", "1 bis 5, N Fach wählen", "Würfel", "Datei", "Automatik", "ändern",
                               "Übersicht", "Extras", "Info"}));
    }

    void TheQueryOfATypedCard()
    {
        QVERIFY(anzeige_->Taste(box_, "n"));
        QVERIFY(Hoerbar(abfrage_,
                        {"17", "Neu", "Haustiere", "Wer bellt?", "dackel.bmp", "Prüfen", "Eingabe prüft"}));
        QVERIFY(anzeige_->Tasten(abfrage_, {"k", "Return"}));
        QVERIFY(Hoerbar(abfrage_, {"falsch", "der Hund", "Weiter", "Eingabe weiter"}));
        QVERIFY(anzeige_->Taste(abfrage_, "Return"));
        QVERIFY(Hoerbar(box_, {"1 falsch", "Fach 1: 1 von 50 Karten"}));
    }

    void TheQueryOfATickCard()
    {
        QVERIFY(anzeige_->Taste(box_, "2"));
        QVERIFY(Hoerbar(abfrage_, {"23", "Fach", ": Katze", ": Esel", ": leer"}));
        QVERIFY(anzeige_->Tasten(abfrage_, {"2", "Return"}));
        QVERIFY(Hoerbar(abfrage_, {"richtig"}));
    }

    void TheEditorAndItsDialogs()
    {
        QVERIFY(anzeige_->Tasten(box_, {"alt+n", "k"}));
        QVERIFY(Hoerbar(editor_, {"17", "Haustiere", "Wer bellt?", "der Hund", "Fach", "Antwort als",
                                  "Text/Zahl", "Ankreuzen", "dackel.bmp", "Strg+I speichert"}));
        QVERIFY(anzeige_->Tasten(editor_, {"alt+x", "b"}));
        QVERIFY(Hoerbar("Bild bearbeiten", {"dackel.bmp", "17", "ändern", "löschen", "OK"}));
        QVERIFY(anzeige_->Schliessen("Bild bearbeiten", "Escape"));
        QVERIFY(anzeige_->Tasten(editor_, {"alt+x", "t"}));
        QVERIFY(Hoerbar("Sound bearbeiten", {"Sound abspielen bei:", "Frage", "Antwort", "falscher Antwort",
                                             "keine Datei", "Ton hierher ziehen", "17", "ändern", "löschen",
                                             "wird neben die Kartei kopiert", "OK"}));
        QVERIFY(anzeige_->Schliessen("Sound bearbeiten", "Escape"));
        QVERIFY(Fenster(editor_, {"F3"}, "Suchen", {"Suchbegriff", "suchen", "Abbruch"}));
    }

    void OverviewAndStatistics()
    {
        QVERIFY(Fenster(box_, {"alt+b", "a"}, "Lernkarten", {"Wer bellt?", "der Hund", "Frage", "Antwort"}));
        QVERIFY(Fenster(box_, {"alt+e", "z"}, "Statistik", {"Neu", "Zurück", "richtig", "falsch"}));
    }

    void TheToolsAndTheirMessage()
    {
        QVERIFY(Fenster(box_, {"alt+e", "i"}, "ASCII-Import", {"Dateiname", "Trennzeichen", "OK", "Zurück"}));
        QVERIFY(Fenster(box_, {"alt+e", "p"}, "Kartei packen", {"Dateiname", "a.pzbz", "OK", "Zurück"}));
        QVERIFY(Fenster(box_, {"alt+e", "f"}, "Fremde Kartei einlesen",
                        {"Dateiname", "Noch keine Datei gewählt.", "Thema:", "OK", "Zurück"}));
        QVERIFY(Fenster(box_, {"alt+e", "g"}, "Kartei ausgeben",
                        {"Dateiname", "Form", "a.apkg", "OK", "Zurück"}));
        QVERIFY(anzeige_->Tasten(box_, {"alt+e", "e"}));
        QVERIFY(Hoerbar("ASCII-Export", {"Dateiname", "Trennzeichen", "OK", "Zurück"}));
        QVERIFY(anzeige_->Taste("ASCII-Export", "Return"));
        QVERIFY(Hoerbar("Merkkasten (a.pzb)", {"Dateiname", "OK"}));
    }

    void TheToolsOverWholeFiles()
    {
        QVERIFY(Fenster(box_, {"alt+e", "t"}, "Thema ausfiltern", {"Thema", "Dateiname", "OK", "Zurück"}));
        QVERIFY(Fenster(box_, {"alt+e", "s"}, "Thema ausfiltern", {"Dateiname", "OK", "Zurück"}));
        QVERIFY(Fenster(box_, {"alt+e", "h"}, "Kartei anhängen", {"Dateiname", "OK", "Zurück"}));
        QVERIFY(Fenster(box_, {"alt+e", "a"}, "Alle Karten nach Fach Neu", {"4 Karten", "OK", "Zurück"}));
        QVERIFY(Fenster(box_, {"alt+e", "r"}, "Erledigte Karten nach Fach Neu", {"1 Karte", "OK", "Zurück"}));
        QVERIFY(Fenster(box_, {"alt+e", "v"}, "Verlauf", {"a.pzb"}));
        QVERIFY(Fenster(box_, {"alt+d", "c"}, "Sicherungen", {"a.pzb"}));
    }

    void TheSettings()
    {
        QVERIFY(Fenster(box_, {"ctrl+l"}, "Datei laden", {"a.pzb", "laden", "abbrechen", "Dateien in"}));
        QVERIFY(Fenster(box_, {"alt+i", "b"}, "über Paukfix", {"Paukfix", "OK"}));
    }

    void TheHandbook()
    {
        QVERIFY(Fenster(
            box_, {"F1"}, "Handbuch",
            {"Lernen mit Fächern", "Wer eine Vokabel zum ersten Mal hört", "Suchen", "Inhalt", "Schließen"}));
    }
};

PAUKFIX_TEST(VorleseLaufTest)
#include "VorleseLaufTest.moc"

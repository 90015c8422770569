// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bildbuehne.h"
#include "Fremdtexte.h"
#include "KartenTextBox.h"
#include "RichText.h"
#include "TestProgram.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using Handlung = std::function<void(Bildbuehne &)>;

constexpr int Karten = 4;

// Cards with texts of all kinds; each can be stored, and has a picture.
QList<CardRecord> Gerippe()
{
    QList<CardRecord> karten;
    for (int i = 1; i <= Karten; ++i) {
        karten << Bildkarte(i, u"rot.bmp"_s);
        karten.back().Antworttyp = i % 2 + 1.25; // storing rounds it: that is how it is seen
    }
    return karten;
}

struct Treubuehne : Bildbuehne
{
    explicit Treubuehne(quint32 saat) : Bildbuehne(Gerippe())
    {
        QRandomGenerator zufall(saat);
        kartei.store.CloseCardFile();
        for (int nummer = 1; nummer <= Karten; ++nummer) {
            for (const char *feld : Fremdtexte::Textfelder())
                Fremdtexte::Schreiben(kartei.Path(), nummer, feld, Fremdtexte::Irgendeiner(zufall));
            const auto gewiss = [&](const QList<QByteArray> &texte) {
                return texte[static_cast<int>((saat + static_cast<quint32>(nummer)) %
                                              static_cast<quint32>(texte.size()))];
            };
            Fremdtexte::Schreiben(kartei.Path(), nummer, "Frage", gewiss(Fremdtexte::MitVerlust()));
            Fremdtexte::Schreiben(kartei.Path(), nummer, "Antwort_1", gewiss(Fremdtexte::OhneVerlust()));
        }
        vorher = Texte();
        kartei.Open();
        Zeigen();
        Klick("CVor"); // card 2 is a typed one
    }

    // Of every field the values of all cards.
    QList<QList<QByteArray>> Texte() const
    {
        QList<QList<QByteArray>> werte;
        for (const char *feld : Fremdtexte::Textfelder())
            werte << Fremdtexte::Lesen(kartei.Path(), feld);
        return werte;
    }

    // The first cards have the texts that they had; a copy has those of card `vorlage`.
    void Vergleichen(int vorlage = 0)
    {
        kartei.store.CloseCardFile();
        const QList<QList<QByteArray>> nachher = Texte();
        for (int feld = 0; feld < vorher.size(); ++feld) {
            const char *name = Fremdtexte::Textfelder()[static_cast<std::size_t>(feld)];
            QVERIFY2(nachher[feld].mid(0, Karten) == vorher[feld], name);
            QCOMPARE(nachher[feld].size(), Karten + (vorlage > 0 ? 1 : 0));
            if (vorlage > 0)
                QVERIFY2(nachher[feld].back() == vorher[feld][vorlage - 1], name);
        }
    }

    QList<QList<QByteArray>> vorher;
};

// What is done on a card without changing any of its texts.
const QList<std::pair<const char *, Handlung>> &Handlungen()
{
    static const QList<std::pair<const char *, Handlung>> alle{
        {"topic", [](Bildbuehne &b) { b.Tippe("MaskThema", u"neu"_s); }},
        {"type",
         [](Bildbuehne &b) {
             b.Klick("Antwort_K");
             b.Klick("Antwort_T");
         }},
        {"tick",
         [](Bildbuehne &b) {
             b.Klick("Antwort_K");
             b.Klick("Check1(0)");
         }},
        {"picture moved",
         [](Bildbuehne &b) {
             b.Ziehen(b.Bild(), {-40, 30});
         }},
        {"picture sized by key",
         [](Bildbuehne &b) {
             b.Bild()->setFocus();
             b.Taste(Qt::Key_Right, Qt::ShiftModifier);
         }},
        {"window, colours and scrolling",
         [](Bildbuehne &b) {
             b.Tippe("MaskThema", u"x"_s);
             b.fenster->resize(1200, 900);
             QPalette dunkel(Qt::white, Qt::black);
             dunkel.setColor(QPalette::Base, Qt::black);
             b.fenster->setPalette(dunkel);
             QApplication::processEvents();
             b.fenster->setPalette({});
             b.Finde("MFrage")->setFocus();
             b.Taste(Qt::Key_End, Qt::ControlModifier);
             b.Taste(Qt::Key_PageDown);
         }},
        {"marked and copied",
         [](Bildbuehne &b) {
             b.Tippe("MaskThema", u"x"_s);
             for (const char *feld : {"MFrage", "Antwort(0)"}) {
                 b.Finde(feld)->setFocus();
                 b.Taste(Qt::Key_A, Qt::ControlModifier);
                 b.Taste(Qt::Key_C, Qt::ControlModifier);
                 b.Taste(Qt::Key_Left, Qt::ShiftModifier);
             }
         }},
        {"typed and undone",
         [](Bildbuehne &b) {
             b.Tippe("Antwort(0)", u"viel"_s);
             b.Taste(Qt::Key_Backspace);
             b.Taste(Qt::Key_Return);
             for (int i = 0; i < 10; ++i)
                 b.Taste(Qt::Key_Z, Qt::ControlModifier);
             b.Tippe("MaskThema", u"x"_s);
         }},
        {"formats at the caret",
         [](Bildbuehne &b) {
             b.Tippe("MaskThema", u"x"_s);
             b.Finde("Antwort(0)")->setFocus();
             for (const Qt::Key taste : {Qt::Key_F, Qt::Key_K, Qt::Key_H})
                 b.Taste(taste, Qt::ControlModifier);
         }},
        {"asked and left",
         [](Bildbuehne &b) {
             b.Tippe("MaskThema", u"x"_s);
             b.Tippe("MFrage", u"xy"_s); // No is the answer
             b.Taste(Qt::Key_Delete);
             b.Taste(Qt::Key_B, Qt::ControlModifier);
             QCOMPARE(b.kartei.messages.vorgaben.size(), 3);
         }},
    };
    return alle;
}

// What stores the card.
const QList<std::pair<const char *, Handlung>> &Wege()
{
    static const QList<std::pair<const char *, Handlung>> alle{
        {"Cadd", [](Bildbuehne &b) { b.Klick("Cadd"); }},
        {"Ctrl+I", [](Bildbuehne &b) { b.Taste(Qt::Key_I, Qt::ControlModifier); }},
        {"CVor", [](Bildbuehne &b) { b.Klick("CVor"); }},
        {"CZurück", [](Bildbuehne &b) { b.Klick("CZurück"); }},
        {"CVVor", [](Bildbuehne &b) { b.Klick("CVVor"); }},
        {"CZZurück", [](Bildbuehne &b) { b.Klick("CZZurück"); }},
        {"CEOF", [](Bildbuehne &b) { b.Klick("CEOF"); }},
        {"key forward",
         [](Bildbuehne &b) { b.Taste(Qt::Key_Less, Qt::ControlModifier | Qt::ShiftModifier); }},
        {"jump",
         [](Bildbuehne &b) {
             b.Ersetze("MaskFrageNr", u"4"_s);
             b.Taste(Qt::Key_Return);
         }},
        {"search",
         [](Bildbuehne &b) {
             const Drehbuch buch({Drehbuch::In(u"Suchen"_s, [](QWidget &dialog) {
                 Hand(dialog).Tippe(u"e"_s);
                 Hand(dialog).Taste(Qt::Key_Return);
             })});
             b.Taste(Qt::Key_F3);
         }},
        {"copy", [](Bildbuehne &b) { b.Menue("MExtras", "MKopieren"); }},
        {"Cback", [](Bildbuehne &b) { b.Klick("Cback"); }},
        {"window", [](Bildbuehne &b) { b.fenster->close(); }},
    };
    return alle;
}

const char *const MitBild = "{\\rtf1\\ansi eins {\\pict 00}{\\footnote x}zwei\\par}";

CardRecord Bildtextkarte(int nummer = 1)
{
    CardRecord karte = MakeCard(nummer, 0, nummer);
    karte.Frage = QString::fromLatin1(MitBild);
    karte.Frage_Klartext = u"eins zwei"_s;
    return karte;
}

const auto BildFrage =
    u"Die Frage enthält Bilder und Fußnoten.\nDas kann dieser Editor nicht erhalten: Es geht "
    u"verloren, wenn Sie "
    u"den Text ändern.\n\nTrotzdem ändern? Bei „Nein“ bleibt der Text, wie er ist."_s;

} // namespace

Q_DECLARE_METATYPE(Handlung)

// A text that its writer has not changed stays as it is in the file, byte for byte.
class TexttreueTest : public QObject
{
    Q_OBJECT

private slots:

    void TextsThatNobodyChangedStayByteForByte_data()
    {
        QTest::addColumn<Handlung>("handlung");
        QTest::addColumn<Handlung>("weg");
        QTest::addColumn<bool>("kopiert");
        for (const auto &[was, handlung] : Handlungen())
            for (const auto &[wohin, weg] : Wege())
                QTest::addRow("%s, %s", was, wohin) << handlung << weg << (qstrcmp(wohin, "copy") == 0);
    }

    void TextsThatNobodyChangedStayByteForByte()
    {
        QFETCH(Handlung, handlung);
        QFETCH(Handlung, weg);
        QFETCH(bool, kopiert);
        static quint32 saat = 0;
        Treubuehne b(++saat);
        handlung(b);
        weg(b);
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        b.fenster->close();
        b.Vergleichen(kopiert ? 2 : 0);
        const QByteArray typ = Fremdtexte::Lesen(b.kartei.Path(), "Antworttyp")[1];
        QVERIFY2(typ != "real:312E3235", typ.constData()); // the card was stored
    }

    // --- A text that holds what the editor cannot keep

    void WriterIsAskedOnceBeforeSuchATextIsChanged()
    {
        EditorBuehne b({Bildtextkarte()});
        b.Zeigen();
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        b.Tippe("MFrage", u"ab"_s);
        b.Taste(Qt::Key_Return);
        b.Taste(Qt::Key_Delete);
        QCOMPARE(b.kartei.messages.vorgaben, QList{Meldungen::Antwort::Nein});
        QCOMPARE(b.Meldungstexte(), QStringList(BildFrage));
        b.Klick("Cadd");
        b.Tippe("MFrage", u"c"_s); // stored, it holds no such thing any more
        b.Klick("Cback");
        QVERIFY(b.Meldungstexte().isEmpty());
        const CardRecord karte = b.kartei.Stored()[0];
        QVERIFY(!karte.Frage.contains(u"pict"_s));
        QCOMPARE(karte.Frage_Klartext, u"ab\r\ncins zwei"_s);
    }

    void WithoutAYesTheTextStaysAndTheCardIsNotEvenChanged()
    {
        EditorBuehne b({Bildtextkarte()});
        b.Zeigen();
        b.Tippe("MFrage", u"a"_s);
        QCOMPARE(b.Meldungstexte(), QStringList(BildFrage));
        QCOMPARE(b.Text("MFrage"), u"eins zwei"_s);
        b.Klick("Cback");
        QCOMPARE(b.kartei.Stored()[0], Bildtextkarte());
    }

    void EveryRoadToAChangeAsks_data()
    {
        QTest::addColumn<Handlung>("weg");
        const auto taste = [](Qt::Key code, Qt::KeyboardModifiers dazu = {}) {
            return Handlung([=](Bildbuehne &b) { b.Taste(code, dazu); });
        };
        QTest::newRow("Delete") << taste(Qt::Key_Delete);
        QTest::newRow("Backspace") << taste(Qt::Key_Backspace);
        QTest::newRow("word before") << taste(Qt::Key_Backspace, Qt::ControlModifier);
        QTest::newRow("word behind") << taste(Qt::Key_Delete, Qt::ControlModifier);
        QTest::newRow("Enter") << taste(Qt::Key_Enter);
        QTest::newRow("line") << taste(Qt::Key_Return, Qt::ShiftModifier);
        QTest::newRow("blank") << taste(Qt::Key_Space);
        QTest::newRow("cut") << taste(Qt::Key_X, Qt::ControlModifier);
        QTest::newRow("paste") << taste(Qt::Key_V, Qt::ControlModifier);
        QTest::newRow("paste, the old way") << taste(Qt::Key_Insert, Qt::ShiftModifier);
        // Of the menu that the box has for itself.
        const auto menue = [](const char *eintrag) {
            return Handlung([=](Bildbuehne &b) {
                RichTextBox *box = b.Box("MFrage");
                QContextMenuEvent wunsch(QContextMenuEvent::Keyboard, QPoint(5, 5),
                                         box->viewport()->mapToGlobal(QPoint(5, 5)));
                QApplication::sendEvent(box->viewport(), &wunsch);
                auto *offen = qobject_cast<QMenu *>(QApplication::activePopupWidget());
                QVERIFY(offen);
                auto *aktion = offen->findChild<QAction *>(QLatin1String(eintrag));
                QVERIFY(aktion && aktion->isEnabled());
                offen->close();
                aktion->trigger();
            });
        };
        QTest::newRow("menu, cut") << menue("edit-cut");
        QTest::newRow("menu, paste") << menue("edit-paste");
        QTest::newRow("menu, delete") << menue("edit-delete");
        QTest::newRow("dropped") << Handlung([](Bildbuehne &b) {
            QMimeData mime;
            mime.setText(u"gezogen"_s);
            QWidget *feld = b.Box("MFrage")->viewport();
            QDragEnterEvent herein(QPoint(5, 5), Qt::MoveAction, &mime, Qt::LeftButton, {});
            QApplication::sendEvent(feld, &herein);
            QVERIFY(herein.isAccepted());
            const bool gesperrt = b.Box("MFrage")->isReadOnly();
            QDropEvent fall(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton, {});
            QApplication::sendEvent(feld, &fall);
            QVERIFY(fall.isAccepted());
            // The source keeps its text where the answer is still to come.
            QVERIFY(!gesperrt || fall.dropAction() == Qt::CopyAction);
            QCoreApplication::processEvents();
        });
        QTest::newRow("bold") << taste(Qt::Key_F, Qt::ControlModifier);
        QTest::newRow("raised") << Handlung([](Bildbuehne &b) { b.Menue("MFont", "MFonthoch"); });
        QTest::newRow("font") << Handlung([](Bildbuehne &b) {
            b.dialoge.schrift = Schriftwahl{QFont(u"Arial"_s, 20), Qt::red};
            b.Menue("MFont", "MSchriftart");
        });
        QTest::newRow("accent") << Handlung([](Bildbuehne &b) {
            QInputMethodEvent eingabe;
            eingabe.setCommitString(u"é"_s);
            QApplication::sendEvent(b.Box("MFrage"), &eingabe);
        });
    }

    void EveryRoadToAChangeAsks()
    {
        QFETCH(Handlung, weg);
        Bildbuehne b({Bildtextkarte()});
        b.Zeigen();
        QApplication::clipboard()->setText(u"neu"_s);
        b.Auswaehlen("MFrage", 1, 3);
        weg(b);
        QCOMPARE(b.Meldungstexte(), QStringList(BildFrage));
        const QString vorher = ToRtf(*b.Box("MFrage")->document());
        QCOMPARE(b.Text("MFrage"), u"eins zwei"_s);
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        weg(b);
        QCOMPARE(b.Meldungstexte(), QStringList(BildFrage));
        QVERIFY(ToRtf(*b.Box("MFrage")->document()) != vorher);
        // Undone, it is as it was in the file.
        for (int i = 0; i < 5; ++i)
            b.Taste(Qt::Key_Z, Qt::ControlModifier);
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[0].Frage, QString::fromLatin1(MitBild));
    }

    void RoadsThatDoNotAskChangeNothing()
    {
        Bildbuehne b({Bildtextkarte()});
        b.Zeigen();
        RichTextBox *box = b.Box("MFrage");
        b.Auswaehlen("MFrage", 1, 3);
        for (const Qt::Key taste : {Qt::Key_C, Qt::Key_A, Qt::Key_Z, Qt::Key_Y, Qt::Key_Home, Qt::Key_End})
            b.Taste(taste, Qt::ControlModifier);
        for (const Qt::Key taste : {Qt::Key_Left, Qt::Key_PageDown, Qt::Key_Up, Qt::Key_Escape, Qt::Key_Tab})
            b.Taste(taste);
        // The text of another program, by the mouse, that is not let go here.
        QMimeData mime;
        mime.setText(u"gezogen"_s);
        QDragEnterEvent herein(QPoint(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, {});
        QApplication::sendEvent(box->viewport(), &herein);
        QDragLeaveEvent hinaus;
        QApplication::sendEvent(box->viewport(), &hinaus);
        QTest::mouseClick(box->viewport(), Qt::MiddleButton);
        // A screen reader's hand.
        QTextCursor(box->document()).insertText(u"x"_s);
        QVERIFY(b.Meldungstexte().isEmpty());
        b.Tippe("MaskThema", u"x"_s);
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[0].Frage, QString::fromLatin1(MitBild));
    }

    void EachTextIsAskedAboutByItsName()
    {
        CardRecord karte = Bildtextkarte();
        karte.Antworttyp = 2;
        karte.Antwort_2 = u"{\\rtf1 {\\highlight1 a}\\v b\\v0{\\*\\neu c}}"_s;
        EditorBuehne b({karte});
        b.Zeigen();
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        b.Tippe("MFrage", u"x"_s);
        b.Tippe("Antwort(1)", u"x"_s);
        const QStringList texte = b.Meldungstexte();
        QCOMPARE(texte.size(), 2);
        QVERIFY2(texte[1].startsWith(u"Antwort 2 enthält verborgenen Text, farbig hinterlegten "
                                     u"Text und Inhalte eines anderen Programms."_s),
                 qPrintable(texte[1]));
        b.Klick("Cadd");
        const CardRecord danach = b.kartei.Stored()[0];
        QCOMPARE(danach.Frage_Klartext, u"xeins zwei"_s);
        QCOMPARE(danach.Antwort_2, karte.Antwort_2);
    }

    void AnotherCardIsAskedAboutAnew()
    {
        EditorBuehne b({Bildtextkarte(1), Bildtextkarte(2)});
        b.Zeigen();
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja, Meldungen::Antwort::Ja};
        b.Tippe("MFrage", u"x"_s);
        b.Klick("CVor");
        b.Tippe("MFrage", u"x"_s);
        QCOMPARE(b.Meldungstexte().size(), 2);
    }

    // Its writer sees no text, but there is something.
    void CardWithAPictureForAQuestionIsStoredWithANewTopic()
    {
        CardRecord karte = MakeCard(1, 0, 1);
        karte.Frage = u"{\\rtf1{\\pict 00}\\par}"_s;
        karte.Frage_Klartext = u" "_s;
        EditorBuehne b({karte});
        b.Zeigen();
        b.Ersetze("MaskThema", u"neu"_s);
        b.Klick("Cadd");
        QVERIFY(b.Meldungstexte().isEmpty());
        karte.Picture_9_Name = u"neu"_s;
        karte.PictureTop = BildlageVorgabe.oben;
        karte.Pictureleft = BildlageVorgabe.links;
        karte.Picturewidth = BildlageVorgabe.breite;
        karte.Pictureheight = BildlageVorgabe.hoehe;
        QCOMPARE(b.kartei.Stored()[0], karte);
    }

    // Typed, undone and done again at random: what counts as unchanged shows what it showed.
    void TextThatCountsAsUnchangedIsUnchanged()
    {
        QRandomGenerator zufall(11);
        int unveraendert = 0;
        for (int runde = 0; runde < 30; ++runde) {
            CardRecord karte = MakeCard(1, 0, 1);
            karte.Frage = QString::fromUtf8(
                Fremdtexte::OhneVerlust()[runde % static_cast<int>(Fremdtexte::OhneVerlust().size())]);
            EditorBuehne b({karte});
            b.Zeigen();
            auto *box = b.Finde<KartenTextBox>("MFrage");
            box->setFocus();
            const QString vorher = box->RichText();
            for (int schritt = 0; schritt < 40; ++schritt) {
                switch (zufall.bounded(8)) {
                case 0:
                    QTest::keyClicks(box, u"ab"_s);
                    break;
                case 1:
                    b.Taste(Qt::Key_Return);
                    break;
                case 2:
                    b.Taste(Qt::Key_A, Qt::ControlModifier);
                    b.Taste(Qt::Key_F, Qt::ControlModifier);
                    break;
                case 3:
                    b.Taste(Qt::Key_Backspace);
                    break;
                case 4:
                    b.Taste(Qt::Key_Y, Qt::ControlModifier);
                    break;
                default:
                    b.Taste(Qt::Key_Z, Qt::ControlModifier);
                }
                if (box->Bearbeitet())
                    continue;
                QCOMPARE(box->RichText(), vorher);
                ++unveraendert;
            }
            b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
            b.fenster->close();
        }
        QVERIFY(unveraendert > 100);
    }
};

PAUKFIX_TEST(TexttreueTest)
#include "TexttreueTest.moc"

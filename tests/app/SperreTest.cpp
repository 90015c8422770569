// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AnderesProgramm.h"
#include "ProgrammBuehne.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QAbstractItemView>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QRadioButton>

#include <sys/inotify.h>
#include <unistd.h>

using namespace paukfix;

// Whatever window of the program is open: no other program gets at the open card file.
class SperreTest : public ProgrammBuehne
{
    Q_OBJECT

private:
    QStringList luecken_; // what other programs could do, and with which dialog
    int dialoge_ = 0;

    void Fragen(const QString &wann)
    {
        if (const QString luecke = GapInLock(Pfad("a.pzb")); !luecke.isEmpty())
            luecken_ << wann + ": " + luecke;
    }

    // The file dialog, when it has listed the directory.
    static QFileDialog *Gelistet()
    {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        const auto *dateien =
            dialog && dialog->isActiveWindow() ? dialog->findChild<QFileSystemModel *>() : nullptr;
        if (!dateien)
            return nullptr;
        for (const auto *liste : dialog->findChildren<QAbstractItemView *>())
            if (liste->isVisible() && liste->model()->rowCount(liste->rootIndex()) > 0 &&
                dateien->rowCount(dateien->index(dialog->directory().path())) > 0)
                return dialog;
        return nullptr;
    }

    // Looks at the lock while the file dialog is open, and cancels it.
    Drehbuch::Szene Dateidialog()
    {
        return [this] {
            auto *dialog = Gelistet();
            if (!dialog)
                return false;
            ++dialoge_;
            Fragen(dialog->windowTitle());
            dialog->reject();
            return true;
        };
    }

    // Looks again when the file dialog has gone; `name` is the window that had opened it.
    Drehbuch::Szene Danach(const QString &name)
    {
        return Drehbuch::In(name, [=, this](QWidget &) { Fragen("nach " + name); });
    }

    static Drehbuch::Szene Klick(const QString &name, const QString &knopf)
    {
        return Drehbuch::In(name, [=](QWidget &fenster) { Hand(fenster).Klick(knopf); });
    }

    // One file of every kind that the program lists beside the card files.
    void DateienDazu() const
    {
        QVERIFY(QFile::copy(QDir(ProgramDir()).filePath("Applause.wav"), Pfad("ton.wav")));
        QImage(8, 8, QImage::Format_RGB32).save(Pfad("bild.bmp"));
        for (const char *name : {"text.txt", "text.csv", "ohne", "pdf.pdf"}) {
            QFile datei(Pfad(name));
            QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write("Frage;Antwort;Thema\r\n") > 0);
        }
    }

private slots:

    void init()
    {
        Aufstellen();
        luecken_.clear();
        dialoge_ = 0;
        DateienDazu();
        OeffnenMitZweiDateien();
        QCOMPARE(GapInLock(Pfad("a.pzb")), QString());
    }

    void cleanup() { Abraeumen(); }

    void DialogsOfTheBoxKeepTheLock()
    {
        for (const char *eintrag : {"Möffnen", "Mneu"}) {
            const Drehbuch buch({Dateidialog(), Danach("LBOX")});
            Waehlen(eintrag);
            QTRY_VERIFY(buch.Fertig());
        }
        QCOMPARE(dialoge_, 2);
        QCOMPARE(luecken_, QStringList());
    }

    void DialogsOfTheFileToolsKeepTheLock()
    {
        // These ask for no file.
        const QStringList ohne{"Uebersicht", "AlleNull", "ErlNull"};
        for (const auto &[eintrag, fenster] : Dateiwerkzeuge) {
            const QString name = fenster;
            if (ohne.contains(name))
                continue;
            const Drehbuch buch({Klick(name, "cmdDateiname"), Dateidialog(), Danach(name),
                                 Taste(name, Qt::Key_Escape), Danach("LBOX")});
            Waehlen(eintrag);
            QTRY_VERIFY(buch.Fertig());
        }
        QCOMPARE(dialoge_, Dateiwerkzeuge.size() - ohne.size());
        QCOMPARE(luecken_, QStringList());
    }

    void DialogsOfTheEditorKeepTheLock()
    {
        Waehlen("MKarten");
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        for (const auto &[eintrag, name] :
             {std::pair{"MBilder", "Bildbearbeiten"}, {"MTon", "Soundbearbeiten"}}) {
            const Drehbuch buch({Klick(name, "Option3"), Dateidialog(), Danach(name),
                                 Taste(name, Qt::Key_Escape), Danach("PFÄndern")});
            Hand::An("PFÄndern").Finde<QAction>(eintrag)->trigger();
            QTRY_VERIFY(buch.Fertig());
        }
        QCOMPARE(dialoge_, 2);
        QCOMPARE(luecken_, QStringList());
    }

    void AFileThatIsTakenFromADialogKeepsTheLock()
    {
        Waehlen("MKarten");
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        const Drehbuch buch({Klick("Bildbearbeiten", "Option3"),
                             [this] {
                                 auto *dialog = Gelistet();
                                 if (!dialog)
                                     return false;
                                 dialog->selectFile(Pfad("bild.bmp"));
                                 dialog->findChild<QLineEdit *>("fileNameEdit")->setText("bild.bmp");
                                 QMetaObject::invokeMethod(dialog, "accept");
                                 return true;
                             },
                             Danach("Bildbearbeiten"), Taste("Bildbearbeiten", Qt::Key_Escape),
                             Danach("PFÄndern")});
        Hand::An("PFÄndern").Finde<QAction>("MBilder")->trigger();
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(luecken_, QStringList());
    }

    void ADialogReadsNoneOfTheFilesThatItLists()
    {
        const int wache = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
        QVERIFY(::inotify_add_watch(wache, QFile::encodeName(ordner_->filePath("programm")), IN_OPEN) >= 0);
        for (const char *eintrag : {"Möffnen", "Mneu"}) {
            const Drehbuch buch({[] {
                auto *dialog = Gelistet();
                if (dialog)
                    dialog->reject();
                return dialog != nullptr;
            }});
            Waehlen(eintrag);
            QTRY_VERIFY(buch.Fertig());
        }
        QStringList gelesen;
        alignas(inotify_event) std::array<char, 65536> puffer{};
        const ssize_t laenge = ::read(wache, puffer.data(), puffer.size());
        for (ssize_t stelle = 0; stelle < laenge;) {
            const auto *ereignis =
                reinterpret_cast<const inotify_event *>(&puffer.at(static_cast<std::size_t>(stelle)));
            if (ereignis->len > 0 && !(ereignis->mask & IN_ISDIR)) // a directory is listed, and may be synced
                gelesen << QString::fromUtf8(ereignis->name);
            stelle += static_cast<ssize_t>(sizeof(inotify_event) + ereignis->len);
        }
        ::close(wache);
        QCOMPARE(gelesen.join(" "), QString());
    }
};

PAUKFIX_TEST(SperreTest)
#include "SperreTest.moc"

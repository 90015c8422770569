// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AppConfig.h"

#include "ProgramDirectory.h"
#include "Protokoll.h"
#include "SafeFile.h"
#include "Step.h"

#include <QFileInfo>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 MaxFileSize = qint64{256} * 1024; // bytes; a file of settings holds a few hundred
constexpr int MaxReports = 10; // messages of one reading: a broken file must not show thousands

} // namespace

AppConfig::AppConfig(Meldungen &meldungen) : meldungen_(meldungen) {}

QString AppConfig::KonfigPfad(const char *name) const
{
    return ProgrammPfad + '/'_L1 + QLatin1String(name);
}

QString AppConfig::ProgrammDatei(const QString &name) const
{
    const auto in = [&name](const QString &ordner) { return ordner + '/'_L1 + name; };
    QString eigene = in(ProgrammPfad);
    if (!QFileInfo(eigene).isFile()) {
        for (const QString &ordner : Lieferpfade)
            if (QFileInfo(in(ordner)).isFile())
                return in(ordner);
    }
    return eigene;
}

QString AppConfig::LetzteDatei(std::size_t i) const
{
    return MovedAlong(MDat.at(i), ProgrammPfad);
}

// "konfig.dat" is gone, and there is a shipped one to make it from.
bool AppConfig::Verloren() const
{
    const QString konfig = KonfigPfad("konfig.dat");
    return !QFileInfo::exists(konfig) && ProgrammDatei(u"konfig.dat"_s) != konfig;
}

// Makes "konfig.dat" again as it was shipped and returns its content; throws where that cannot be.
QByteArray AppConfig::NeuAnlegen() const
{
    const DirectoryLock lock(ProgrammPfad);
    QByteArray content = ReadFile(ProgrammDatei(u"konfig.dat"_s), MaxFileSize);
    RewriteFile(KonfigPfad("konfig.dat"), content);
    return content;
}

void AppConfig::ReadConfig()
{
    int errors = 0;
    const auto melden = [&](const std::exception &error) {
        ++errors;
        if (errors > MaxReports)
            return;
        const QString last = u": weitere Fehler in konfig.dat werden nicht gemeldet"_s;
        meldungen_.Zeigen(u"Fehler in Konfig_Lesen"_s + (errors < MaxReports ? ErrorText(error) : last));
    };

    QByteArray content;
    try {
        content = ReadFile(KonfigPfad("konfig.dat"), MaxFileSize);
    } catch (const std::exception &error) {
        melden(error);
        if (Verloren()) {
            try {
                content = NeuAnlegen();
            } catch (const std::exception &noch) {
                melden(noch);
            }
        }
    }
    EinstellungenLesen(*this, content, melden);
    qCInfo(LogEinstellungen).noquote() << "read" << KonfigPfad("konfig.dat") << "errors:" << errors;
    Gelesen();
}

void AppConfig::WriteConfig(qint16 section, const QString &value)
{
    {
        const DirectoryLock lock(ProgrammPfad);
        const QString konfig = KonfigPfad("konfig.dat");
        const QByteArray content = MitNeuemAbschnitt(ReadFile(konfig, MaxFileSize), section, value, *this);
        // A rename asks nobody whether the file that it replaces may be written.
        if (!MayWrite(konfig))
            throw StoreError(Fehler::NichtErlaubt, u"Die Datei ist schreibgeschützt: %1"_s.arg(konfig));
        if (content.size() > MaxFileSize)
            throw StoreError(Fehler::ZuWenigSpeicher, u"Die Datei würde zu groß: %1"_s.arg(konfig));
        WriteFileSynced(KonfigPfad("konfig.new"), content);
        // konfig.new stays, so konfig.dat gets a second copy in one rename: overwriting it in place would
        // leave half a file after a kill, and a hard link to konfig.new would share what is written there
        // next.
        RewriteFile(konfig, content);
        qCInfo(LogEinstellungen).noquote() << "wrote section" << section << "of" << konfig;
    }
    ReadConfig();
}

void AppConfig::NurMerken(qint16 section, const QString &value)
{
    if (section != Abschnitt::LetzteDateien)
        return; // the caller has changed the settings already
    ZuletztGeoeffnet(value);
    Gelesen();
}

void AppConfig::Sichern(qint16 section, const QString &value, const QString &kontext)
{
    if (NurDieserLauf) {
        NurMerken(section, value);
        return;
    }
    try {
        WriteConfig(section, value);
    } catch (const StoreError &error) {
        NurDieserLauf = error.Number() == Fehler::NichtErlaubt;
        meldungen_.Zeigen(kontext + error.Text());
        if (NurDieserLauf) {
            NurMerken(section, value);
        } else if (Verloren()) {
            Step(meldungen_, kontext, [&] {
                NeuAnlegen();
                WriteConfig(section, value);
            });
        }
    }
}

bool AppConfig::ReadIntroAnimation() const
{
    return AnimationDesIntros(ReadFile(KonfigPfad("konfig.dat"), MaxFileSize));
}

} // namespace paukfix

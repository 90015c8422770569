// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "TestDienste.h"

#include <QFile>
#include <QLocale>
#include <QObject>
#include <QTemporaryDir>

#include <memory>
#include <string_view>

namespace paukfix {

// A program directory with a konfig.dat, and the settings that are read from it and written to it.
class KonfigFixture : public QObject
{
protected:
    // Bytes with NUL among them.
    static QByteArray Raw(std::string_view bytes)
    {
        return {bytes.data(), static_cast<qsizetype>(bytes.size())};
    }

    std::unique_ptr<TestDienste> dienste_;
    QTemporaryDir *directory_ = nullptr; // of these services
    TestMeldungen *meldungen_ = nullptr;
    AppConfig *config_ = nullptr;
    int gelesen_ = 0;

    QString Path(const QString &name) const { return directory_->filePath(name); }

    // Lines end with CR LF where `content` writes \n.
    void Write(QByteArray content) const { WriteBytes(content.replace('\n', "\r\n")); }

    void WriteBytes(const QByteArray &content) const
    {
        QFile file(Path("konfig.dat"));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write konfig.dat");
    }

    QByteArray ReadBytes(const QString &name = "konfig.dat") const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    // With \n for CR LF.
    QByteArray Read() const { return ReadBytes().replace("\r\n", "\n"); }

    int WriteError(qint16 section, const QString &value) const
    {
        try {
            config_->WriteConfig(section, value);
        } catch (const StoreError &error) {
            return error.Number();
        }
        return 0;
    }

    QString WriteErrorText(qint16 section, const QString &value) const
    {
        try {
            config_->WriteConfig(section, value);
        } catch (const StoreError &error) {
            return error.Text();
        }
        return {};
    }

    int IntroError() const
    {
        try {
            config_->ReadIntroAnimation();
        } catch (const StoreError &error) {
            return error.Number();
        }
        return 0;
    }

    QStringList Names() const { return QStringList(config_->MDat.begin(), config_->MDat.end()); }

    void SetUp()
    {
        dienste_ = std::make_unique<TestDienste>();
        directory_ = &dienste_->programm;
        meldungen_ = &dienste_->meldungen;
        config_ = &dienste_->konfig;
        gelesen_ = 0;
        QObject::connect(config_, &AppConfig::Gelesen, [this] { ++gelesen_; });
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }
};

} // namespace paukfix

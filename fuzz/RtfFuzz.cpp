// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FuzzSupport.h"
#include "RichText.h"
#include "RichTextLosses.h"

#include <QAbstractTextDocumentLayout>
#include <QGuiApplication>
#include <QTextDocument>

using namespace paukfix;

namespace {

int argumentCount = 1;
char programName[] = "rtf_fuzz";
char *arguments[] = {programName, nullptr};

} // namespace

extern "C" int LLVMFuzzerInitialize(int * /*count*/, char *** /*values*/)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QGuiApplication(argumentCount, arguments); // lives as long as the process, as fonts need it
    return 0;
}

// Any text is shown and laid out, and what is written of it reads back as the same text and loses nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = BytesOf(data, size);
    LossesOf(QString::fromUtf8(bytes));
    for (const bool asBytes : {true, false}) {
        QTextDocument document;
        const bool whole =
            asBytes ? SetRichTextBytes(document, bytes) : SetRichText(document, QString::fromUtf8(bytes));
        document.setTextWidth(400);
        Require(document.documentLayout()->documentSize().height() > 0);
        const QString rtf = ToRtf(document);
        Require(!LossesOf(rtf));
        QTextDocument again;
        if (SetRichText(again, rtf) && whole)
            Require(PlainText(again) == PlainText(document));
    }
    return 0;
}

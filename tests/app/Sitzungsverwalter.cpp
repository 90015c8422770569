// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sitzungsverwalter.h"

#include <QSocketNotifier>
#include <QTest>

#include <array>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <vector>

// Last: it defines words like True and Status.
#include <X11/SM/SMlib.h>

namespace paukfix {

struct Sitzungsverwalter::Innen
{
    IceListenObj *horcher = nullptr;
    int anzahl = 0;
    std::vector<std::unique_ptr<QSocketNotifier>> waechter;
    SmsConn programm = nullptr;
    bool da = false;        // the program's first report is over
    bool gesichert = false; // its answer to the end of the session
    bool gelungen = false;
    int gefragt = 0;
    bool abgebrochen = false;

    static Bool Vertrauen(char *) { return True; }

    static Innen &Von(SmPointer innen) { return *static_cast<Innen *>(innen); }

    void Lauschen(int leitung, std::function<void()> tun)
    {
        auto neu = std::make_unique<QSocketNotifier>(leitung, QSocketNotifier::Read);
        QObject::connect(neu.get(), &QSocketNotifier::activated, neu.get(), std::move(tun));
        waechter.push_back(std::move(neu));
    }

    void Annehmen(IceListenObj stelle)
    {
        IceAcceptStatus wie = IceAcceptSuccess;
        IceConn leitung = IceAcceptConnection(stelle, &wie);
        if (!leitung)
            return;
        const std::size_t platz = waechter.size();
        Lauschen(IceConnectionNumber(leitung), [this, leitung, platz] {
            if (IceProcessMessages(leitung, nullptr, nullptr) != IceProcessMessagesSuccess)
                waechter[platz]->setEnabled(false); // the program has gone
        });
    }

    static Status NeuesProgramm(SmsConn conn, SmPointer innen, unsigned long *welche, SmsCallbacks *rufe,
                                char **)
    {
        Von(innen).programm = conn;
        *welche = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
                  SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask |
                  SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask |
                  SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
        rufe->register_client = {Anmelden, innen};
        rufe->interact_request = {Erlauben, innen};
        rufe->interact_done = {[](SmsConn, SmPointer p, Bool abbruch) { Von(p).abgebrochen = abbruch; },
                               innen};
        rufe->save_yourself_request = {[](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}, innen};
        rufe->save_yourself_phase2_request = {[](SmsConn c, SmPointer) { SmsSaveYourselfPhase2(c); }, innen};
        rufe->save_yourself_done = {Fertig, innen};
        rufe->close_connection = {Abmelden, innen};
        rufe->set_properties = {[](SmsConn, SmPointer, int zahl, SmProp **was) {
                                    for (int i = 0; i < zahl; ++i)
                                        SmFreeProperty(was[i]);
                                    free(was);
                                },
                                innen};
        rufe->delete_properties = {[](SmsConn, SmPointer, int zahl, char **was) {
                                       for (int i = 0; i < zahl; ++i)
                                           free(was[i]);
                                       free(was);
                                   },
                                   innen};
        rufe->get_properties = {[](SmsConn c, SmPointer) { SmsReturnProperties(c, 0, nullptr); }, innen};
        return True;
    }

    static Status Anmelden(SmsConn conn, SmPointer, char *frueher)
    {
        free(frueher);
        char *name = SmsGenerateClientID(conn);
        SmsRegisterClientReply(conn, name);
        free(name);
        // A new program reports once, and nothing ends by it.
        SmsSaveYourself(conn, SmSaveLocal, False, SmInteractStyleNone, False);
        return True;
    }

    static void Erlauben(SmsConn conn, SmPointer p, int)
    {
        ++Von(p).gefragt;
        SmsInteract(conn);
    }

    static void Fertig(SmsConn conn, SmPointer p, Bool gut)
    {
        Innen &innen = Von(p);
        if (!innen.da) {
            innen.da = true;
            SmsSaveComplete(conn);
            return;
        }
        innen.gesichert = true;
        innen.gelungen = gut;
    }

    static void Abmelden(SmsConn conn, SmPointer p, int zahl, char **gruende)
    {
        SmFreeReasons(zahl, gruende);
        Von(p).programm = nullptr;
        IceConn leitung = SmsGetIceConnection(conn);
        SmsCleanUp(conn);
        IceSetShutdownNegotiation(leitung, False);
        IceCloseConnection(leitung);
    }
};

Sitzungsverwalter::Sitzungsverwalter() : innen_(std::make_unique<Innen>())
{
    std::signal(SIGPIPE, SIG_IGN); // a program may have gone before it was answered
    std::array<char, 256> fehler{};
    const auto laenge = static_cast<int>(fehler.size());
    if (!SmsInitialize("Paukfix", "1", Innen::NeuesProgramm, innen_.get(), Innen::Vertrauen, laenge,
                       fehler.data()) ||
        !IceListenForConnections(&innen_->anzahl, &innen_->horcher, laenge, fehler.data()))
        qFatal("%s", fehler.data());
    IceSetIOErrorHandler([](IceConn) {}); // the program has gone
    for (int i = 0; i < innen_->anzahl; ++i) {
        IceListenObj stelle = innen_->horcher[i];
        IceSetHostBasedAuthProc(stelle, Innen::Vertrauen);
        innen_->Lauschen(IceGetListenConnectionNumber(stelle), [this, stelle] { innen_->Annehmen(stelle); });
    }
}

Sitzungsverwalter::~Sitzungsverwalter()
{
    innen_->waechter.clear();
    IceFreeListenObjs(innen_->anzahl, innen_->horcher);
}

QString Sitzungsverwalter::Adresse() const
{
    char *adresse = IceComposeNetworkIdList(innen_->anzahl, innen_->horcher);
    QString text = QString::fromLocal8Bit(adresse);
    free(adresse);
    return text;
}

bool Sitzungsverwalter::Angemeldet() const
{
    return QTest::qWaitFor([this] { return innen_->da; }, 30000);
}

void Sitzungsverwalter::Beenden(Fragen fragen)
{
    innen_->gesichert = innen_->gelungen = innen_->abgebrochen = false;
    innen_->gefragt = 0;
    const int art = fragen == Fragen::Alle          ? SmInteractStyleAny
                    : fragen == Fragen::NachFehlern ? SmInteractStyleErrors
                                                    : SmInteractStyleNone;
    SmsSaveYourself(innen_->programm, SmSaveBoth, True, art, False);
}

bool Sitzungsverwalter::Gesichert() const
{
    return QTest::qWaitFor([this] { return innen_->gesichert; }, 30000);
}

bool Sitzungsverwalter::Gelungen() const
{
    return innen_->gelungen;
}

int Sitzungsverwalter::Gefragt() const
{
    return innen_->gefragt;
}

bool Sitzungsverwalter::Abgebrochen() const
{
    return innen_->abgebrochen;
}

void Sitzungsverwalter::Schluss()
{
    SmsDie(innen_->programm);
}

void Sitzungsverwalter::DochNicht()
{
    SmsShutdownCancelled(innen_->programm);
}

} // namespace paukfix

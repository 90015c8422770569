// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QPainter>
#include <QPrinter>

#include <memory>

namespace paukfix {

// The default printer, or the first one where none is the default; nothing where no printer is installed (the
// toolkit would print to a file then).
std::unique_ptr<QPrinter> Standarddrucker();

// One print job, from its first page until the printer has taken it. What an error leaves unfinished goes to
// the printer as far as it came. All methods throw StoreError 482 where the job is refused.
class Druckauftrag
{
public:
    // Begins the first page. `drucker` must outlive the job.
    explicit Druckauftrag(QPrinter &drucker);
    Druckauftrag(const Druckauftrag &) = delete;
    Druckauftrag &operator=(const Druckauftrag &) = delete;
    ~Druckauftrag() = default;

    QPainter &Maler() { return maler_; }

    void NeueSeite();
    // The job is over and was accepted.
    void Abschicken();

private:
    void Pruefen(bool angenommen, const QString &grund = {}) const;

    QPrinter &drucker_;
    QPainter maler_;
};

} // namespace paukfix

// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>

namespace paukfix {

// Whether a name that comes from somebody else may become that of a file in a directory of the learner: a
// bare name without separators of any system, control characters, marks that turn the direction of writing,
// or a dot in front, and short enough for every file system. So it can neither lead elsewhere nor pass for
// another.
bool IsPlainName(QStringView name);

} // namespace paukfix

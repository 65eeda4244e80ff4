// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>

namespace tav {

// Text made safe for an HTML page, in element content and in attribute
// values between double quotes: &, <, >, " and ' become character
// references; what a page may not hold (control characters, noncharacters,
// halves of broken surrogate pairs) becomes U+FFFD. Every other letter stays as it is
// (the page is UTF-8).
QString htmlEscaped(QStringView text);

}  // namespace tav

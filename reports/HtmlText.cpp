// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/HtmlText.h"

namespace tav {

namespace {

// Tab, line feed and carriage return are white space in a page; the other
// C0 and C1 control characters, DEL and the noncharacters are not allowed.
bool isForbidden(char16_t c)
{
    return (c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r') || (c >= 0x7f && c <= 0x9f) ||
           (c >= 0xfdd0 && c <= 0xfdef) || c >= 0xfffe;
}

}  // namespace

QString htmlEscaped(QStringView text)
{
    QString out;
    out.reserve(text.size() + text.size() / 8);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        switch (c) {
        case u'&': out += QLatin1String("&amp;"); continue;
        case u'<': out += QLatin1String("&lt;"); continue;
        case u'>': out += QLatin1String("&gt;"); continue;
        case u'"': out += QLatin1String("&quot;"); continue;
        case u'\'': out += QLatin1String("&#39;"); continue;
        default: break;
        }
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            out += text[i];
            out += text[++i];
        } else if (QChar::isSurrogate(c) || isForbidden(c)) {
            out += QChar(QChar::ReplacementCharacter);
        } else {
            out += text[i];
        }
    }
    return out;
}

}  // namespace tav

// Captions as they are shown. In the tables "&&" stands for one ampersand and a tab may stand at
// either end; a lone "&" comes from what the user typed and is itself. No caption sets a mnemonic.
#pragma once

#include <QString>

namespace kelvrane {

/// What the user reads: no outer tabs, "&&" as "&".
QString ShownCaption(const QString& caption);

/// The same for controls that would take "&" for a mnemonic.
QString ControlCaption(const QString& caption);

/// Plain text for such controls: every "&" is shown.
QString EscapeMnemonics(const QString& text);

/// Text for a tool tip that is shown as it stands, "<" included, and wraps when long.
QString PlainToolTip(const QString& text);

/// One line of bounded length for painting: breaks as blanks, the middle of an endless text left
/// out.
QString OneLine(const QString& text);

} // namespace kelvrane

// How the pages of the help look: colours from the palette, sizes from the font of the view, and
// pictures no wider than the column that they stand in.
#pragma once

#include <QByteArray>
#include <QPalette>
#include <QString>

#include <functional>

class QTextDocument;
class QUrl;
class QVariant;

namespace kelvrane {

/// The style sheet that a page is read with, before its own.
QString HelpStyle(const QPalette& palette);

/// What the help file holds under an address.
using HelpData = std::function<QByteArray(const QUrl& address)>;

/// What a page is given for something of a kind of QTextDocument::ResourceType. Never nothing for a
/// picture: the page would look for a file of that name.
QVariant HelpResource(int type, const QByteArray& data);

/// Shows the page's pictures at their own size, or as wide as the column where that is less. Width
/// in logical pixels; smooth at the ratio of the device. To be called again when either changes.
void FitPictures(QTextDocument& page, const QUrl& address, const HelpData& data, int width,
                 double devicePixelRatio);

} // namespace kelvrane

// The chart screen's picture, to a file and to paper.
#pragma once

namespace kelvrane {

/// Takes the picture, asks for a name and writes it as a bitmap. A file that exists is replaced
/// only on Yes, whole; any other answer asks for a name again. Cancel ends it silently. Raises what
/// the file store raises, and NoObject when there is no screen to take a picture of.
void mnuSaveAs();

/// Takes the picture and prints it on the printer that the user chooses, fitted to the page.
/// Raises NoObject.
void mnuPrint();

} // namespace kelvrane

// The help file: one comes with the program, and the help is read from a copy of it in the
// program's folder, where an older version's is renewed.
#pragma once

#include <QString>

namespace kelvrane {

/// The copy in the program's folder.
QString HelpFilePath();

/// What the help viewer makes of the copy for itself.
QString HelpCollectionPath();

/// Puts the file that came with the program into the program's folder, unless just this one lies
/// there; what was made from the former one goes. Nothing where none came with the program. Raises
/// the file store's errors.
void RenewHelpFile();

/// Removes what was made from the help file; the next use makes it anew. Raises nothing.
void DropHelpCollection();
/// The same, where it is damaged.
void DropDamagedHelpCollection();

} // namespace kelvrane

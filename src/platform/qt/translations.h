// The toolkit's own texts in Portuguese.
#pragma once

// Qt's translation where it is installed, and below it the few texts that the program's
// dialogs cannot do without.
void InstallPortuguese();

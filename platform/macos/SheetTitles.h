#pragma once

namespace kestrel {

// The toolkit makes the title of a file dialog that of the system's panel, which shows none as long
// as it is a sheet: from now on open panels show it as their message.
void showTitlesOfSheets();

} // namespace kestrel

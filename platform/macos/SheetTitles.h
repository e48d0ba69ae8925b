#pragma once

namespace kestrel {

// Qt gives the title of a file dialog to the system's panel, but a panel that is a sheet shows no
// title. After this call open panels show it as their message.
void showTitlesOfSheets();

} // namespace kestrel

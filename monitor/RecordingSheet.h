#pragma once

#include "common/dialogs/FileDialog.h"

#include <string>

namespace kestrel {

class DocumentFiles;

// The file dialog, a sheet on the activity window, that saves a recording.
class RecordingSheet final : public FileDialog {
public:
    // `files` outlives the sheet. See FileDialog for the folder.
    RecordingSheet(std::string script, DocumentFiles& files, QString& folder, QWidget& window);

private:
    void save();

    const std::string m_script;
    DocumentFiles& m_files;
};

} // namespace kestrel

#pragma once

#include <QFileDialog>

#include <string>

namespace kestrel {

class DocumentFiles;

// The file dialog, a sheet on the activity window, that saves a recording.
class RecordingSheet : public QFileDialog {
public:
    // The sheet deletes itself once it is closed. `files` outlives it.
    RecordingSheet(std::string script, DocumentFiles& files, QWidget& window);

private:
    void save();

    const std::string m_script;
    DocumentFiles& m_files;
};

} // namespace kestrel

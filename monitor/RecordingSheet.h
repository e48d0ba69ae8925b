#pragma once

#include <QFileDialog>

#include <string>

namespace kestrel {

// The file dialog, a sheet on the activity window, that saves a recording.
class RecordingSheet : public QFileDialog {
public:
    // The sheet deletes itself once it is closed.
    RecordingSheet(std::string script, QWidget& window);

private:
    void save();

    const std::string m_script;
};

} // namespace kestrel

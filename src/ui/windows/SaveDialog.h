#pragma once

#include "app/pages/ExportModel.h"

#include <QFileDialog>
#include <QObject>
#include <QPointer>
#include <string>

namespace brindle {

/// Asks with the system's own dialog where a statement is saved, and tells the export. Nothing waits for it.
/// Thread: main.
class SaveDialog : public QObject {
    Q_OBJECT

public:
    /// Outlived by the export.
    explicit SaveDialog(ExportModel& exporter, QObject* parent = nullptr);
    ~SaveDialog() override;

private:
    void open(const std::string& suggestedPath);
    void close(int result);

    ExportModel& exporter_;
    QPointer<QFileDialog> dialog_;  // null while none is open
};

}  // namespace brindle

/// What the two lines of the export menu do.
#pragma once

#include "base/SerialQueue.h"
#include "ports/SavePanel.h"
#include "store/TaskList.h"
#include "unicode/CivilCalendar.h"

#include <functional>
#include <string>

namespace quillo {

/// What an ExportTarget works with; all of it outlives it.
struct ExportTargetDependencies {
    std::function<const TaskList&()> tasks;
    const unicode::CivilCalendar& calendar; ///< where dates are told; its owner may assign it another zone
    SavePanel& panel;
};

/// Asks where to save the whole list, and writes it there in the background: the list as it was when the
/// action began, whatever happens to it while the panel is open. A file that is there is replaced as a whole,
/// or stays as it was. What fails is only told to the log.
///
/// Belongs to the main thread. Going, it waits until what was to be written is written.
class ExportTarget {
public:
    explicit ExportTarget(ExportTargetDependencies dependencies);

    void exportMarkdown();
    void exportJson();

    /// Returns when everything that was to be written is written, or has failed. For tests.
    void drain() { queue_.drain(); }

private:
    using Document = std::function<std::string()>;
    void save(const SaveQuestion& question, Document document);

    const ExportTargetDependencies with_;
    SerialQueue queue_{"Quillo.ExportTarget.write"};
};

} // namespace quillo

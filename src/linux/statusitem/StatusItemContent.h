/// What the status item shows at the moment, wherever it shows it.
#pragma once

#include "ports/StatusItem.h"

#include <QString>

namespace quillo {

struct StatusItemContent {
    StatusItemFace face;
    QString label; ///< the text beside the symbol, without the blanks around it
};

} // namespace quillo

import QtQuick
import Quillo

/// Who made this, behind the mascot's secret.
SheetPopup {
    id: root

    padding: 0

    contentItem: CreditsView {
        focus: true
        onClose: root.close()
    }
}

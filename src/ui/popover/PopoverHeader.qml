import QtQuick
import Quillo

/// The popover's upper strip: what this is, how much there is to do, and what else can be done.
Item {
    id: root

    required property PopoverModel model
    required property real cornerRadius

    /// Closes what is open.
    function end() {
        menu.item?.close();
    }

    implicitHeight: 44

    BarStrip {
        anchors.fill: parent
        cornerRadius: root.cornerRadius
        atTop: true
    }

    Text {
        id: title
        anchors.left: parent.left
        anchors.leftMargin: 20
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Quillo")
        textFormat: Text.PlainText
        font.pixelSize: Theme.titleSize
        font.weight: Font.Bold
        color: Theme.text
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Text {
        anchors.left: title.right
        anchors.leftMargin: 8
        anchors.right: mascot.left
        anchors.rightMargin: 8
        anchors.baseline: title.baseline
        text: qsTr("%lld active", "", root.model.activeCount).replace("%lld", Number(root.model.activeCount).toLocaleString(Qt.locale(), "f", 0))
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideRight
        font.pixelSize: Theme.captionSize
        color: Theme.secondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    // With nothing to do Olo sits in the list instead.
    Loader {
        id: mascot
        anchors.right: options.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        active: root.model.activeCount > 0
        sourceComponent: MascotView {
            size: 28
            onSecretTap: root.model.creditsShown = true
        }
    }

    IconButton {
        id: options
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        symbol: "ellipsis"
        name: qsTr("More options")
        onClicked: root.openMenu()
    }

    Loader {
        id: menu
    }

    function openMenu() {
        if (menu.status === Loader.Null)
            menu.setSource("OptionsMenu.qml", {
                parent: root.parent,
                model: root.model
            });
        const place = options.mapToItem(root.parent, 0, 0);
        (menu.item as PopupMenu).openAt(Qt.rect(place.x, place.y, options.width, options.height), options.activeFocus);
    }
}

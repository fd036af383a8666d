import QtQuick
import Quillo

/// A line of text to type into. Return submits it, but not the Return that ends an input method's composition.
TextInput {
    id: root

    required property string name
    property string hint
    property string placeholder
    /// What its menu opens in. Without one the menu has a window of its own, for the field's has no room for it.
    property Item surface: null
    /// Its menu has the keyboard, and gives it back.
    property bool menuShown: false

    signal submitted

    activeFocusOnTab: true
    clip: true
    color: Theme.text
    font.pixelSize: Theme.fontSize
    // Text goes where its script begins; where there is none yet, that of the interface does.
    horizontalAlignment: length > 0 ? undefined : TextInput.AlignLeft
    maximumLength: 10000
    persistentSelection: menuShown
    selectByMouse: true
    selectedTextColor: Theme.accentText
    selectionColor: Theme.accent
    verticalAlignment: TextInput.AlignVCenter

    Accessible.role: Accessible.EditableText
    Accessible.name: name
    Accessible.description: hint
    Accessible.focusable: true

    // Before TextInput sees the key: it would end the composition and accept the text in one go.
    Keys.onReturnPressed: root.returnPressed()
    Keys.onEnterPressed: root.returnPressed()

    Keys.onMenuPressed: root.openMenu(root.cursorRectangle, true)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_F10 && (event.modifiers & Qt.ShiftModifier);
        if (event.accepted)
            root.openMenu(root.cursorRectangle, true);
    }

    function returnPressed() {
        if (root.inputMethodComposing)
            Qt.inputMethod.commit();
        else
            root.submitted();
    }

    function openMenu(place, byKeyboard) {
        if (menu.status === Loader.Null && surface)
            menu.setSource("TextMenu.qml", {
                parent: surface,
                field: root
            });
        else if (menu.status === Loader.Null)
            menu.setSource("TextMenuWindow.qml", {
                field: root
            });
        menuShown = true;
        const corner = surface ? mapToItem(surface, place.x, place.y) : mapToGlobal(place.x, place.y);
        menu.item.openAt(Qt.rect(corner.x, corner.y, place.width, place.height), byKeyboard);
    }

    Loader {
        id: menu
    }

    Connections {
        target: menu.item
        function onClosed() {
            root.menuShown = false;
        }
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        onPressed: mouse => {
            root.forceActiveFocus();
            const position = root.positionAt(mouse.x, mouse.y);
            if (position < root.selectionStart || position > root.selectionEnd)
                root.cursorPosition = position;
            root.openMenu(Qt.rect(mouse.x, mouse.y, 0, 0), false);
        }
    }

    Text {
        anchors.fill: parent
        visible: root.length === 0 && root.preeditText.length === 0
        text: root.placeholder
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 9
        font.pixelSize: root.font.pixelSize
        color: Theme.placeholder
        Accessible.ignored: true
    }
}

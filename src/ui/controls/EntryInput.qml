import QtQuick
import Quillo

/// A line of text to type into. Return submits it, but not the Return that ends an input method's composition.
TextInput {
    id: root

    required property string name
    property string hint
    property string placeholder

    signal submitted

    activeFocusOnTab: true
    clip: true
    color: Theme.text
    font.pixelSize: Theme.fontSize
    // Text goes where its script begins; where there is none yet, that of the interface does.
    horizontalAlignment: length > 0 ? undefined : TextInput.AlignLeft
    maximumLength: 10000
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

    function returnPressed() {
        if (root.inputMethodComposing)
            Qt.inputMethod.commit();
        else
            root.submitted();
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

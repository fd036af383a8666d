import QtQuick
import Quillo

/// The place: nowhere, a folder, or a server.
Column {
    id: root

    required property SyncModel model

    property int place: model.place
    property alias folder: folderField.value
    property alias address: addressField.value
    property alias user: userField.value
    property alias password: passwordField.value

    readonly property string where: place === SyncModel.Folder ? folder : place === SyncModel.Server ? address : ""
    /// There is enough to try it.
    readonly property bool isComplete: place === SyncModel.Nowhere || where.trim() !== ""
    /// It is what is used already.
    readonly property bool isUsed: place === model.place && password === "" && (place === SyncModel.Nowhere || place === SyncModel.Folder && folder === model.folder || place === SyncModel.Server && address === model.address && user === model.user)

    signal submitted

    spacing: 16

    Component.onCompleted: {
        folder = model.folder;
        address = model.address;
        user = model.user;
        choices.itemAt(place).takeFocus();
    }

    /// The keyboard goes first: what has it must stay in the Tab key's way.
    function choose(which) {
        choices.itemAt(which).takeFocus();
        place = which;
    }

    Connections {
        target: root.model
        function onFolderChosen(folder) {
            root.folder = folder;
        }
    }

    FormSection {
        width: parent.width
        heading: qsTr("Sync Through")

        Repeater {
            id: choices
            model: [
                {
                    text: qsTr("Nothing"),
                    help: qsTr("The list stays on this computer.")
                },
                {
                    text: qsTr("A folder"),
                    help: qsTr("One that Syncthing, Nextcloud, Dropbox or a network keeps in step.")
                },
                {
                    text: qsTr("A WebDAV server"),
                    help: qsTr("Such as Nextcloud, ownCloud or a server of your own.")
                }
            ]

            RadioRow {
                required property int index
                required property var modelData

                text: modelData.text
                help: modelData.help
                checked: root.place === index
                onChosen: root.choose(index)
                onStepped: by => root.choose((index + by + choices.count) % choices.count)
            }
        }
    }

    FormSection {
        width: parent.width
        visible: root.place === SyncModel.Folder

        FieldRow {
            id: folderField
            text: qsTr("Folder")
            onSubmitted: root.submitted()
        }

        ButtonRow {
            PushButton {
                text: qsTr("Choose Folder…")
                onClicked: root.model.chooseFolder()
            }
        }
    }

    FormSection {
        width: parent.width
        visible: root.place === SyncModel.Server

        FieldRow {
            id: addressField
            text: qsTr("Address")
            placeholder: qsTr("https://cloud.example.org/dav")
            onSubmitted: root.submitted()
        }

        FieldRow {
            id: userField
            text: qsTr("User")
            onSubmitted: root.submitted()
        }

        FieldRow {
            id: passwordField
            text: qsTr("Password")
            secret: true
            placeholder: root.place === root.model.place && root.user !== "" ? qsTr("unchanged") : ""
            onSubmitted: root.submitted()
        }
    }
}

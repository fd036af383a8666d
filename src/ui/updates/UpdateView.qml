pragma ComponentBehavior: Bound

import QtQuick
import Quillo

/// What the update window shows.
FocusScope {
    id: root

    required property UpdateModel model

    readonly property int stage: model.stage
    readonly property bool available: stage === UpdateModel.Available
    readonly property bool busy: stage === UpdateModel.Checking || stage === UpdateModel.Downloading

    implicitHeight: Math.max(picture.height, column.implicitHeight)

    /// Gives the keyboard to what Return should do at this step.
    function takeKeyboard() {
        for (const button of [download, reveal, retry, close, cancel, later]) {
            if (button.visible) {
                button.forceActiveFocus();
                return;
            }
        }
    }

    Image {
        id: picture
        anchors.left: parent.left
        anchors.top: parent.top
        width: 64
        height: 64
        source: "mascot/Olo.svg"
        sourceSize: Qt.size(Math.round(64 * Screen.devicePixelRatio), Math.round(64 * Screen.devicePixelRatio))
        Accessible.ignored: true
    }

    Column {
        id: column
        anchors.left: picture.right
        anchors.leftMargin: 16
        anchors.right: parent.right
        spacing: 12

        Column {
            width: parent.width
            spacing: 6

            Text {
                width: parent.width
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                text: root.model.heading
                textFormat: Text.PlainText
                font.pixelSize: Theme.titleSize
                font.weight: Font.DemiBold
                color: Theme.text
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            Text {
                width: parent.width
                visible: text !== ""
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                text: root.model.message
                textFormat: Text.PlainText
                font.pixelSize: Theme.fontSize
                color: Theme.secondary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        CommandField {
            width: parent.width
            visible: root.model.packageCommand !== ""
            command: root.model.packageCommand
            onCopied: text => root.model.copy(text)
        }

        ReleaseNotes {
            width: parent.width
            visible: root.model.notes !== ""
            text: root.model.notes
        }

        ProgressBar {
            width: parent.width
            visible: root.busy
            name: root.model.heading
            description: root.model.progressText
            indeterminate: root.stage === UpdateModel.Checking
            value: root.model.progress
        }

        Text {
            width: parent.width
            visible: text !== ""
            horizontalAlignment: Text.AlignLeft
            text: root.model.progressText
            textFormat: Text.PlainText
            font.pixelSize: Theme.captionSize
            color: Theme.secondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Flow {
            width: parent.width
            spacing: 8
            layoutDirection: root.LayoutMirroring.enabled ? Qt.LeftToRight : Qt.RightToLeft
            LayoutMirroring.enabled: false

            PushButton {
                id: download
                visible: root.model.downloadable
                text: qsTr("Download")
                prominent: true
                onClicked: root.model.download()
            }
            PushButton {
                id: reveal
                visible: root.stage === UpdateModel.Downloaded
                text: qsTr("Show in Folder")
                prominent: true
                onClicked: root.model.reveal()
            }
            PushButton {
                id: retry
                visible: root.model.retriable
                text: qsTr("Try Again")
                prominent: true
                onClicked: root.model.retry()
            }
            PushButton {
                id: later
                visible: root.available
                text: qsTr("Later")
                onClicked: root.model.dismiss()
            }
            PushButton {
                id: skip
                visible: root.available
                text: qsTr("Skip This Version")
                onClicked: root.model.skip()
            }
            PushButton {
                id: close
                visible: [UpdateModel.UpToDate, UpdateModel.Downloaded, UpdateModel.Failed].includes(root.stage)
                text: qsTr("Close")
                prominent: !reveal.visible && !retry.visible
                onClicked: root.model.dismiss()
            }
            PushButton {
                id: cancel
                visible: root.busy
                text: qsTr("Cancel")
                onClicked: root.model.dismiss()
            }
        }
    }
}

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- The English texts that are worded otherwise on this platform than in the source. -->
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>CreditsView</name>
    <message>
        <source>Thanks for using Quillo.
Made with care for the menu bar power user.</source>
        <translation>Thanks for using Quillo.
Made with care for the status bar power user.</translation>
    </message>
</context>
<context>
    <name>OptionsMenu</name>
    <message>
        <source>Quick Add… (⌃⌥⌘T)</source>
        <translation>Quick Add… (Ctrl+Alt+Super+T)</translation>
    </message>
</context>
<context>
    <name>PopoverFooter</name>
    <message>
        <source>⌃⌥⌘T</source>
        <translation>Ctrl+Alt+Super+T</translation>
    </message>
</context>
<context>
    <name>Quillo</name>
    <message>
        <source>Quillo %1 (%2) on macOS</source>
        <translation>Quillo %1 (%2) on Linux</translation>
    </message>
</context>
<context>
    <name>SettingsFooter</name>
    <message>
        <source>Tiny, fast todo list that lives in your menu bar.</source>
        <translation>Tiny, fast todo list that lives in your status bar.</translation>
    </message>
</context>
<context>
    <name>SettingsGeneral</name>
    <message>
        <source>Sync via iCloud</source>
        <translation>Sync between computers</translation>
    </message>
    <message>
        <source>Keeps your list in sync across your Macs.</source>
        <translation>Keeps your list in sync across your computers.</translation>
    </message>
</context>
<context>
    <name>SettingsStatistics</name>
    <message>
        <source>Counts completions, streaks, and personal records. Stays on this Mac.</source>
        <translation>Counts completions, streaks, and personal records. Stays on this computer.</translation>
    </message>
</context>
</TS>

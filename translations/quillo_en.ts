<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- The English texts that are worded otherwise on this platform than in the source. -->
<TS version="2.1" language="en" sourcelanguage="en">
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
</TS>

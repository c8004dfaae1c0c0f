<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Sample</name>
    <message>
        <source>Go on</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Street</source>
        <comment>road</comment>
        <translation>Straße</translation>
    </message>
    <message>
        <source>Old</source>
        <translation type="vanished">Alt</translation>
    </message>
</context>
<context>
    <name>zefmain</name>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
</context>
</TS>

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
        <comment>address</comment>
        <translation>Straße</translation>
    </message>
    <message>
        <source>All</source>
        <translation type="unfinished">Alle</translation>
    </message>
</context>
<context>
    <name>zefmain</name>
    <message>
        <source>Hello</source>
        <translation>Hallo</translation>
    </message>
</context>
</TS>

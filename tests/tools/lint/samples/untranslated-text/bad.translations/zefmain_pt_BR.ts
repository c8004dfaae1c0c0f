<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pt_BR">
<context>
    <name>Sample</name>
    <message>
        <source>Go on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Street</source>
        <translation>Rua</translation>
    </message>
    <message>
        <source>Old</source>
        <translation>Velho</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Todos</translation>
    </message>
</context>
</TS>

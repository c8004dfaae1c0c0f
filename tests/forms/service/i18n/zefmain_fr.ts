<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>About</name>
    <message>
        <source>About this service</source>
        <translation>À propos de ce service</translation>
    </message>
</context>
</TS>

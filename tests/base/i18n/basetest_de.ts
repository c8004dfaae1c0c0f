<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>zefmain</name>
    <message><source>Welcome</source><translation>Willkommen</translation></message>
    <message><source>Both</source><translation>Beide, zefmain</translation></message>
    <message><source>Größe: %1</source><translation>Size: %1</translation></message>
    <message><source>%{name}</source><translation>%{value}</translation></message>
</context>
<context>
    <name></name>
    <message><source>Both</source><translation>Beide, ohne Kontext</translation></message>
    <message><source>Farewell</source><translation>Lebewohl</translation></message>
    <message><source></source><translation>empty</translation></message>
</context>
<context>
    <name>login</name>
    <message><source>Form text</source><translation>Formulartext</translation></message>
</context>
</TS>

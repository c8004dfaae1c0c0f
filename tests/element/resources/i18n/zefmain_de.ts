<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Login</name>
    <message><source>Welcome</source><translation>Willkommen</translation></message>
</context>
<context>
    <name>Plain</name>
    <message><source>Welcome</source><translation>Willkommen</translation></message>
</context>
<context>
    <name>zefmain</name>
    <message><source>Hello %{user}</source><translation>Hallo %{user}</translation></message>
    <message><source>OK</source><translation>Gut</translation></message>
    <message><source>guest</source><translation>Gast</translation></message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>Login</name>
    <message>
        <source>Good morning, windows</source>
        <translation>Guten Morgen, Fenster</translation>
    </message>
</context>
</TS>

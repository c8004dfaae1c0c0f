<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1">
<context>
    <name>zefmain</name>
    <message><source>Welcome</source><translation>of no language</translation></message>
</context>
</TS>

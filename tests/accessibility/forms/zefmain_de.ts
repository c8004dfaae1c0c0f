<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Everything</name>
    <message>
        <source>Everything</source>
        <translation>Alles</translation>
    </message>
    <message>
        <source>Order now</source>
        <translation>Jetzt bestellen</translation>
    </message>
    <message>
        <source>The goods arrive in two days.</source>
        <translation>Die Ware kommt in zwei Tagen.</translation>
    </message>
    <message>
        <source>Sound is off</source>
        <translation>Ton ist aus</translation>
    </message>
    <message>
        <source>Sound is on</source>
        <translation>Ton ist an</translation>
    </message>
    <message>
        <source>Forgot your password?</source>
        <translation>Kennwort vergessen?</translation>
    </message>
    <message>
        <source>See the &lt;a href="https://example.com/terms"&gt;terms&lt;/a&gt; and the &lt;a href="https://example.com/prices"&gt;prices&lt;/a&gt;.</source>
        <translation>Siehe &lt;a href="https://example.com/terms"&gt;Bedingungen&lt;/a&gt; und &lt;a href="https://example.com/prices"&gt;Preise&lt;/a&gt;.</translation>
    </message>
    <message>
        <source>A long text that has to be cut somewhere in the middle</source>
        <translation>Ein langer Text, der irgendwo in der Mitte gekürzt werden muss</translation>
    </message>
    <message>
        <source>Product &amp;key</source>
        <translation>Produkt&amp;schlüssel</translation>
    </message>
    <message>
        <source>Three groups.</source>
        <translation>Drei Gruppen.</translation>
    </message>
    <message>
        <source>&amp;Name</source>
        <translation>&amp;Name</translation>
    </message>
    <message>
        <source>Please enter a name.</source>
        <translation>Bitte geben Sie einen Namen ein.</translation>
    </message>
    <message>
        <source>I &amp;agree</source>
        <translation>Ich &amp;stimme zu</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
</context>
<context>
    <name>zefmain</name>
    <message>
        <source>part %1 of %2</source>
        <translation>Teil %1 von %2</translation>
    </message>
    <message>
        <source>The key is complete.</source>
        <translation>Der Schlüssel ist vollständig.</translation>
    </message>
</context>
</TS>

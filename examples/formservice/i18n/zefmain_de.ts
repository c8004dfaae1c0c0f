<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>SignIn</name>
    <message>
        <source>Sign in</source>
        <translation>Anmelden</translation>
    </message>
    <message>
        <source>Sign in to %{product}</source>
        <translation>Bei %{product} anmelden</translation>
    </message>
    <message>
        <source>&amp;User name</source>
        <translation>&amp;Benutzername</translation>
    </message>
    <message>
        <source>&amp;Password</source>
        <translation>&amp;Kennwort</translation>
    </message>
    <message>
        <source>&amp;Keep me signed in on this computer</source>
        <translation>&amp;Auf diesem Rechner angemeldet bleiben</translation>
    </message>
    <message>
        <source>Please enter your user name and your password.</source>
        <translation>Bitte geben Sie Benutzername und Kennwort ein.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>Activation</name>
    <message>
        <source>Product activation</source>
        <translation>Produktaktivierung</translation>
    </message>
    <message>
        <source>Activate %{product}</source>
        <translation>%{product} aktivieren</translation>
    </message>
    <message>
        <source>You find the product key in the message that confirmed your order.</source>
        <translation>Den Produktschlüssel finden Sie in der Nachricht, die Ihre Bestellung bestätigt hat.</translation>
    </message>
    <message>
        <source>Product &amp;key</source>
        <translation>Produkt&amp;schlüssel</translation>
    </message>
    <message>
        <source>Four groups of four, and an edition if there is one.</source>
        <translation>Vier Vierergruppen und die Ausgabe, falls es eine gibt.</translation>
    </message>
    <message>
        <source>%{days} days of your trial are left.</source>
        <translation>Ihr Testzeitraum läuft noch %{days} Tage.</translation>
    </message>
    <message>
        <source>Activate later…</source>
        <translation>Später aktivieren …</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Activate</source>
        <translation>Aktivieren</translation>
    </message>
</context>
<context>
    <name>Confirmation</name>
    <message>
        <source>Please confirm</source>
        <translation>Bitte bestätigen</translation>
    </message>
    <message>
        <source>Go on without activating %{product}?</source>
        <translation>Ohne Aktivierung von %{product} fortfahren?</translation>
    </message>
    <message>
        <source>Saving and printing stay switched off until you enter a product key.</source>
        <translation>Speichern und Drucken bleiben abgeschaltet, bis Sie einen Produktschlüssel eingeben.</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>Fortfahren</translation>
    </message>
</context>
<context>
    <name>zefmain</name>
    <message>
        <source>part %1 of %2</source>
        <translation>Teil %1 von %2</translation>
    </message>
    <message>
        <source>Your session has expired.</source>
        <translation>Ihre Sitzung ist abgelaufen.</translation>
    </message>
    <message>
        <source>Enter the four groups of your product key.</source>
        <translation>Geben Sie die vier Gruppen Ihres Schlüssels ein.</translation>
    </message>
    <message>
        <source>The key is not complete yet.</source>
        <translation>Der Schlüssel ist noch nicht vollständig.</translation>
    </message>
    <message>
        <source>This key fits your order.</source>
        <translation>Dieser Schlüssel passt zu Ihrer Bestellung.</translation>
    </message>
    <message>
        <source>This key does not belong to your order.</source>
        <translation>Dieser Schlüssel gehört nicht zu Ihrer Bestellung.</translation>
    </message>
</context>
</TS>

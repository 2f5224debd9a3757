<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-FileCopyrightText: The VorrelDataCore authors -->
<!-- SPDX-License-Identifier: MIT -->
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name></name>
    <message id="11c13098fb478fea">
        <source>Document</source>
        <translation>Dokument</translation>
    </message>
    <message id="fd627c988cb6a2da">
        <source>Changes made by others do not arrive: the connection to the server is interrupted.</source>
        <translation>Änderungen anderer kommen nicht an: Die Verbindung zum Server ist unterbrochen.</translation>
    </message>
    <message id="error.attachment">
        <source>The file could not be loaded.</source>
        <translation>Die Datei konnte nicht geladen werden.</translation>
    </message>
    <message id="error.network.1">
        <source>The server refuses the connection.</source>
        <translation>Der Server lehnt die Verbindung ab.</translation>
    </message>
    <message id="error.network.2">
        <source>The server has closed the connection.</source>
        <translation>Der Server hat die Verbindung geschlossen.</translation>
    </message>
    <message id="error.network.3">
        <source>The server was not found.</source>
        <translation>Der Server wurde nicht gefunden.</translation>
    </message>
    <message id="error.network.4">
        <source>The server did not answer in time.</source>
        <translation>Der Server hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message id="error.network.6">
        <source>There is no secure connection to the server.</source>
        <translation>Es kommt keine sichere Verbindung zum Server zustande.</translation>
    </message>
    <message id="error.network.7">
        <source>The network was interrupted.</source>
        <translation>Das Netzwerk wurde unterbrochen.</translation>
    </message>
    <message id="error.network.8">
        <source>The network is not available.</source>
        <translation>Das Netzwerk ist nicht verfügbar.</translation>
    </message>
    <message id="error.network.9">
        <source>The network allows no requests in the background at the moment.</source>
        <translation>Das Netzwerk erlaubt zurzeit keine Anfragen im Hintergrund.</translation>
    </message>
    <message id="error.network.99">
        <source>There is an unknown problem with the network.</source>
        <translation>Es gibt ein unbekanntes Problem mit dem Netzwerk.</translation>
    </message>
    <message id="error.network.100">
        <source>The request has failed.</source>
        <translation>Die Anfrage ist fehlgeschlagen.</translation>
    </message>
    <message id="error.network.400">
        <source>The server has rejected the request.</source>
        <translation>Der Server hat die Anfrage abgelehnt.</translation>
    </message>
    <message id="error.network.401">
        <source>The server requires a valid user name and password.</source>
        <translation>Der Server verlangt einen gültigen Benutzernamen und das Passwort dazu.</translation>
    </message>
    <message id="error.network.402">
        <source>The server asks for payment.</source>
        <translation>Der Server verlangt eine Bezahlung.</translation>
    </message>
    <message id="error.network.403">
        <source>The server denies access.</source>
        <translation>Der Server verweigert den Zugriff.</translation>
    </message>
    <message id="error.network.404">
        <source>The content was not found on the server.</source>
        <translation>Der Inhalt wurde auf dem Server nicht gefunden.</translation>
    </message>
    <message id="error.network.405">
        <source>The server does not allow this operation.</source>
        <translation>Der Server lässt diesen Vorgang nicht zu.</translation>
    </message>
    <message id="error.network.406">
        <source>The server cannot answer in the format asked for.</source>
        <translation>Der Server kann nicht im verlangten Format antworten.</translation>
    </message>
    <message id="error.network.407">
        <source>The proxy requires a valid user name and password.</source>
        <translation>Der Proxy verlangt einen gültigen Benutzernamen und das Passwort dazu.</translation>
    </message>
    <message id="error.network.408">
        <source>The request reached the server too slowly.</source>
        <translation>Die Anfrage hat den Server zu langsam erreicht.</translation>
    </message>
    <message id="error.network.409">
        <source>The content was changed by somebody else in the meantime.</source>
        <translation>Der Inhalt wurde inzwischen von jemand anderem geändert.</translation>
    </message>
    <message id="error.network.410">
        <source>The content is no longer on the server.</source>
        <translation>Der Inhalt ist nicht mehr auf dem Server.</translation>
    </message>
    <message id="error.network.411">
        <source>The server requires the size of the content.</source>
        <translation>Der Server verlangt die Größe des Inhalts.</translation>
    </message>
    <message id="error.network.412">
        <source>The content on the server is not as expected.</source>
        <translation>Der Inhalt auf dem Server ist nicht wie erwartet.</translation>
    </message>
    <message id="error.network.413">
        <source>The content is too large for the server.</source>
        <translation>Der Inhalt ist zu groß für den Server.</translation>
    </message>
    <message id="error.network.414">
        <source>The address is too long for the server.</source>
        <translation>Die Adresse ist zu lang für den Server.</translation>
    </message>
    <message id="error.network.415">
        <source>The server does not accept this kind of content.</source>
        <translation>Der Server nimmt diese Art von Inhalt nicht an.</translation>
    </message>
    <message id="error.network.416">
        <source>The server does not have the requested part of the content.</source>
        <translation>Der Server hat den verlangten Teil des Inhalts nicht.</translation>
    </message>
    <message id="error.network.417">
        <source>The server cannot handle the request as expected.</source>
        <translation>Der Server kann die Anfrage nicht wie erwartet behandeln.</translation>
    </message>
    <message id="error.network.421">
        <source>The request has reached the wrong server.</source>
        <translation>Die Anfrage hat den falschen Server erreicht.</translation>
    </message>
    <message id="error.network.422">
        <source>The server cannot process the content.</source>
        <translation>Der Server kann den Inhalt nicht verarbeiten.</translation>
    </message>
    <message id="error.network.423">
        <source>The content is locked on the server.</source>
        <translation>Der Inhalt ist auf dem Server gesperrt.</translation>
    </message>
    <message id="error.network.426">
        <source>The server requires another protocol.</source>
        <translation>Der Server verlangt ein anderes Protokoll.</translation>
    </message>
    <message id="error.network.429">
        <source>The server has received too many requests.</source>
        <translation>Der Server hat zu viele Anfragen erhalten.</translation>
    </message>
    <message id="error.network.431">
        <source>The header of the request is too large for the server.</source>
        <translation>Der Kopf der Anfrage ist zu groß für den Server.</translation>
    </message>
    <message id="error.network.451">
        <source>The content is not available for legal reasons.</source>
        <translation>Der Inhalt ist aus rechtlichen Gründen nicht verfügbar.</translation>
    </message>
    <message id="error.network.500">
        <source>The server has a problem.</source>
        <translation>Der Server hat ein Problem.</translation>
    </message>
    <message id="error.network.501">
        <source>The server does not support this operation.</source>
        <translation>Der Server unterstützt diesen Vorgang nicht.</translation>
    </message>
    <message id="error.network.502">
        <source>A gateway has received an invalid answer from the server.</source>
        <translation>Ein Gateway hat vom Server eine ungültige Antwort erhalten.</translation>
    </message>
    <message id="error.network.503">
        <source>The server is not available at the moment.</source>
        <translation>Der Server ist zurzeit nicht verfügbar.</translation>
    </message>
    <message id="error.network.504">
        <source>A gateway has received no answer from the server in time.</source>
        <translation>Ein Gateway hat vom Server nicht rechtzeitig eine Antwort erhalten.</translation>
    </message>
    <message id="error.network.505">
        <source>The server does not support this version of HTTP.</source>
        <translation>Der Server unterstützt diese Version von HTTP nicht.</translation>
    </message>
    <message id="error.network.507">
        <source>The server has no space left.</source>
        <translation>Der Server hat keinen Speicherplatz mehr.</translation>
    </message>
    <message id="error.network.511">
        <source>The network requires you to sign in.</source>
        <translation>Das Netzwerk verlangt eine Anmeldung.</translation>
    </message>
    <message id="error.network.999">
        <source>The request to the server has failed.</source>
        <translation>Die Anfrage an den Server ist fehlgeschlagen.</translation>
    </message>
    <message id="folder.mediaRoot">
        <source>Media</source>
        <translation>Medien</translation>
    </message>
    <message id="folder.mediaPresets">
        <source>Media used by presets</source>
        <translation>Von Vorlagen verwendete Medien</translation>
    </message>
    <message id="fontstyle.black">
        <source>Black</source>
        <translation>Extrafett</translation>
    </message>
    <message id="fontstyle.bold">
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message id="fontstyle.condensed">
        <source>Condensed</source>
        <translation>Schmal</translation>
    </message>
    <message id="fontstyle.extrabold">
        <source>Extra Bold</source>
        <translation>Extrafett</translation>
    </message>
    <message id="fontstyle.extralight">
        <source>Extra Light</source>
        <translation>Extraleicht</translation>
    </message>
    <message id="fontstyle.italic">
        <source>Italic</source>
        <translation>Kursiv</translation>
    </message>
    <message id="fontstyle.light">
        <source>Light</source>
        <translation>Leicht</translation>
    </message>
    <message id="fontstyle.medium">
        <source>Medium</source>
        <translation>Mittel</translation>
    </message>
    <message id="fontstyle.oblique">
        <source>Oblique</source>
        <translation>Schräg</translation>
    </message>
    <message id="fontstyle.regular">
        <source>Regular</source>
        <translation>Normal</translation>
    </message>
    <message id="fontstyle.semibold">
        <source>Semi Bold</source>
        <translation>Halbfett</translation>
    </message>
    <message id="fontstyle.thin">
        <source>Thin</source>
        <translation>Dünn</translation>
    </message>
</context>
</TS>

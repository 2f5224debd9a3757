<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-FileCopyrightText: The VorrelDataCore authors -->
<!-- SPDX-License-Identifier: MIT -->
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name></name>
    <message id="11c13098fb478fea">
        <source>Document</source>
        <translation>Document</translation>
    </message>
    <message id="fd627c988cb6a2da">
        <source>Changes made by others do not arrive: the connection to the server is interrupted.</source>
        <translation>Changes made by others do not arrive: the connection to the server is interrupted.</translation>
    </message>
    <message id="error.attachment">
        <source>The file could not be loaded.</source>
        <translation>The file could not be loaded.</translation>
    </message>
    <message id="error.network.1">
        <source>The server refuses the connection.</source>
        <translation>The server refuses the connection.</translation>
    </message>
    <message id="error.network.2">
        <source>The server has closed the connection.</source>
        <translation>The server has closed the connection.</translation>
    </message>
    <message id="error.network.3">
        <source>The server was not found.</source>
        <translation>The server was not found.</translation>
    </message>
    <message id="error.network.4">
        <source>The server did not answer in time.</source>
        <translation>The server did not answer in time.</translation>
    </message>
    <message id="error.network.6">
        <source>There is no secure connection to the server.</source>
        <translation>There is no secure connection to the server.</translation>
    </message>
    <message id="error.network.7">
        <source>The network was interrupted.</source>
        <translation>The network was interrupted.</translation>
    </message>
    <message id="error.network.8">
        <source>The network is not available.</source>
        <translation>The network is not available.</translation>
    </message>
    <message id="error.network.9">
        <source>The network allows no requests in the background at the moment.</source>
        <translation>The network allows no requests in the background at the moment.</translation>
    </message>
    <message id="error.network.99">
        <source>There is an unknown problem with the network.</source>
        <translation>There is an unknown problem with the network.</translation>
    </message>
    <message id="error.network.100">
        <source>The request has failed.</source>
        <translation>The request has failed.</translation>
    </message>
    <message id="error.network.400">
        <source>The server has rejected the request.</source>
        <translation>The server has rejected the request.</translation>
    </message>
    <message id="error.network.401">
        <source>The server requires a valid user name and password.</source>
        <translation>The server requires a valid user name and password.</translation>
    </message>
    <message id="error.network.402">
        <source>The server asks for payment.</source>
        <translation>The server asks for payment.</translation>
    </message>
    <message id="error.network.403">
        <source>The server denies access.</source>
        <translation>The server denies access.</translation>
    </message>
    <message id="error.network.404">
        <source>The content was not found on the server.</source>
        <translation>The content was not found on the server.</translation>
    </message>
    <message id="error.network.405">
        <source>The server does not allow this operation.</source>
        <translation>The server does not allow this operation.</translation>
    </message>
    <message id="error.network.406">
        <source>The server cannot answer in the format asked for.</source>
        <translation>The server cannot answer in the format asked for.</translation>
    </message>
    <message id="error.network.407">
        <source>The proxy requires a valid user name and password.</source>
        <translation>The proxy requires a valid user name and password.</translation>
    </message>
    <message id="error.network.408">
        <source>The request reached the server too slowly.</source>
        <translation>The request reached the server too slowly.</translation>
    </message>
    <message id="error.network.409">
        <source>The content was changed by somebody else in the meantime.</source>
        <translation>The content was changed by somebody else in the meantime.</translation>
    </message>
    <message id="error.network.410">
        <source>The content is no longer on the server.</source>
        <translation>The content is no longer on the server.</translation>
    </message>
    <message id="error.network.411">
        <source>The server requires the size of the content.</source>
        <translation>The server requires the size of the content.</translation>
    </message>
    <message id="error.network.412">
        <source>The content on the server is not as expected.</source>
        <translation>The content on the server is not as expected.</translation>
    </message>
    <message id="error.network.413">
        <source>The content is too large for the server.</source>
        <translation>The content is too large for the server.</translation>
    </message>
    <message id="error.network.414">
        <source>The address is too long for the server.</source>
        <translation>The address is too long for the server.</translation>
    </message>
    <message id="error.network.415">
        <source>The server does not accept this kind of content.</source>
        <translation>The server does not accept this kind of content.</translation>
    </message>
    <message id="error.network.416">
        <source>The server does not have the requested part of the content.</source>
        <translation>The server does not have the requested part of the content.</translation>
    </message>
    <message id="error.network.417">
        <source>The server cannot handle the request as expected.</source>
        <translation>The server cannot handle the request as expected.</translation>
    </message>
    <message id="error.network.421">
        <source>The request has reached the wrong server.</source>
        <translation>The request has reached the wrong server.</translation>
    </message>
    <message id="error.network.422">
        <source>The server cannot process the content.</source>
        <translation>The server cannot process the content.</translation>
    </message>
    <message id="error.network.423">
        <source>The content is locked on the server.</source>
        <translation>The content is locked on the server.</translation>
    </message>
    <message id="error.network.426">
        <source>The server requires another protocol.</source>
        <translation>The server requires another protocol.</translation>
    </message>
    <message id="error.network.429">
        <source>The server has received too many requests.</source>
        <translation>The server has received too many requests.</translation>
    </message>
    <message id="error.network.431">
        <source>The header of the request is too large for the server.</source>
        <translation>The header of the request is too large for the server.</translation>
    </message>
    <message id="error.network.451">
        <source>The content is not available for legal reasons.</source>
        <translation>The content is not available for legal reasons.</translation>
    </message>
    <message id="error.network.500">
        <source>The server has a problem.</source>
        <translation>The server has a problem.</translation>
    </message>
    <message id="error.network.501">
        <source>The server does not support this operation.</source>
        <translation>The server does not support this operation.</translation>
    </message>
    <message id="error.network.502">
        <source>A gateway has received an invalid answer from the server.</source>
        <translation>A gateway has received an invalid answer from the server.</translation>
    </message>
    <message id="error.network.503">
        <source>The server is not available at the moment.</source>
        <translation>The server is not available at the moment.</translation>
    </message>
    <message id="error.network.504">
        <source>A gateway has received no answer from the server in time.</source>
        <translation>A gateway has received no answer from the server in time.</translation>
    </message>
    <message id="error.network.505">
        <source>The server does not support this version of HTTP.</source>
        <translation>The server does not support this version of HTTP.</translation>
    </message>
    <message id="error.network.507">
        <source>The server has no space left.</source>
        <translation>The server has no space left.</translation>
    </message>
    <message id="error.network.511">
        <source>The network requires you to sign in.</source>
        <translation>The network requires you to sign in.</translation>
    </message>
    <message id="error.network.999">
        <source>The request to the server has failed.</source>
        <translation>The request to the server has failed.</translation>
    </message>
    <message id="folder.mediaRoot">
        <source>Media</source>
        <translation>Media</translation>
    </message>
    <message id="folder.mediaPresets">
        <source>Media used by presets</source>
        <translation>Media used by presets</translation>
    </message>
    <message id="fontstyle.black">
        <source>Black</source>
        <translation>Black</translation>
    </message>
    <message id="fontstyle.bold">
        <source>Bold</source>
        <translation>Bold</translation>
    </message>
    <message id="fontstyle.condensed">
        <source>Condensed</source>
        <translation>Condensed</translation>
    </message>
    <message id="fontstyle.extrabold">
        <source>Extra Bold</source>
        <translation>Extra Bold</translation>
    </message>
    <message id="fontstyle.extralight">
        <source>Extra Light</source>
        <translation>Extra Light</translation>
    </message>
    <message id="fontstyle.italic">
        <source>Italic</source>
        <translation>Italic</translation>
    </message>
    <message id="fontstyle.light">
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message id="fontstyle.medium">
        <source>Medium</source>
        <translation>Medium</translation>
    </message>
    <message id="fontstyle.oblique">
        <source>Oblique</source>
        <translation>Oblique</translation>
    </message>
    <message id="fontstyle.regular">
        <source>Regular</source>
        <translation>Regular</translation>
    </message>
    <message id="fontstyle.semibold">
        <source>Semi Bold</source>
        <translation>Semi Bold</translation>
    </message>
    <message id="fontstyle.thin">
        <source>Thin</source>
        <translation>Thin</translation>
    </message>
</context>
</TS>

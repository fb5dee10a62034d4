<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>CDisplayDeviceSelectionForceIPDlg</name>
    <message>
        <source>Set IP Address</source>
        <translation>IP-Adresse setzen</translation>
    </message>
    <message>
        <source>NIC Configuration</source>
        <translation>Netzwerkkarte</translation>
    </message>
    <message>
        <source>Device Configuration</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>MAC Address</source>
        <translation>MAC-Adresse</translation>
    </message>
    <message>
        <source>IP Address</source>
        <translation>IP-Adresse</translation>
    </message>
    <message>
        <source>Subnet Mask</source>
        <translation>Subnetzmaske</translation>
    </message>
    <message>
        <source>Default Gateway</source>
        <translation>Standardgateway</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CDisplayDeviceSelectionPartDlg</name>
    <message>
        <source>Form</source>
        <translation>Kameras</translation>
    </message>
    <message>
        <source>Found Devices</source>
        <translation>Gefundene Geräte</translation>
    </message>
    <message>
        <source>System Information</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Interface Information</source>
        <translation>Schnittstelle</translation>
    </message>
    <message>
        <source>Device Information</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Set IP Address...</source>
        <translation>IP-Adresse setzen...</translation>
    </message>
    <message>
        <source>Device Discovery...</source>
        <translation>Gerätesuche...</translation>
    </message>
    <message>
        <source>Show not accessible devices</source>
        <translation>Nicht zugängliche Geräte zeigen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Devices</source>
        <translation>Geräte</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>Schnittstelle</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
</context>
<context>
    <name>CDisplayGraphPartDlg</name>
    <message>
        <source>DisplayGraphPartDlg</source>
        <translation>Diagramm</translation>
    </message>
    <message>
        <source>Graph</source>
        <translation>Graph</translation>
    </message>
</context>
<context>
    <name>CDisplayImagePartDlg</name>
    <message>
        <source>DisplayImagePartDlg</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
</context>
<context>
    <name>CDisplayNodeMapPartDlg</name>
    <message>
        <source>Dialog</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Sort alphabetically&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Alphabetisch ordnen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Display categorically&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Nach Kategorien ordnen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Expand all&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Alles aufklappen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Collapse all&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Alles zuklappen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Refresh&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Neu lesen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Polling for every 1 second&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;Jede Sekunde abfragen&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Polling</source>
        <translation>Abfragen</translation>
    </message>
    <message>
        <source>Visibility:</source>
        <translation>Sichtbarkeit:</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Regular Expression</source>
        <translation>Regulärer Ausdruck</translation>
    </message>
    <message>
        <source>Node</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Features</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
</context>
<context>
    <name>KxApi::CBaseDialogEx</name>
    <message>
        <source>&amp;Status Bar</source>
        <translation>&amp;Statusleiste</translation>
    </message>
</context>
<context>
    <name>KxApi::CCustomPropertyGridProperty_Base</name>
    <message>
        <source>Not Available</source>
        <translation>Nicht verfügbar</translation>
    </message>
</context>
<context>
    <name>KxApi::CCustomPropertyGridProperty_Boolean</name>
    <message>
        <source>False</source>
        <translation>Falsch</translation>
    </message>
    <message>
        <source>True</source>
        <translation>Wahr</translation>
    </message>
</context>
<context>
    <name>KxApi::CCustomPropertyGridProperty_Command</name>
    <message>
        <source>Execute</source>
        <translation>Ausführen</translation>
    </message>
    <message>
        <source>Not Available</source>
        <translation>Nicht verfügbar</translation>
    </message>
</context>
<context>
    <name>KxApi::CCustomPropertyGridProperty_Integer</name>
    <message>
        <source> (True)</source>
        <translation> (Wahr)</translation>
    </message>
    <message>
        <source> (False)</source>
        <translation> (Falsch)</translation>
    </message>
</context>
<context>
    <name>KxApi::CCustomPropertyGridProperty_Register</name>
    <message>
        <source>Not Available</source>
        <translation>Nicht verfügbar</translation>
    </message>
</context>
<context>
    <name>KxApi::CDeviceDiscoveryCommandOptionDlg</name>
    <message>
        <source>Destination IP Address</source>
        <translation>Ziel-IP-Adresse</translation>
    </message>
    <message>
        <source>Allow broadcast of Acknowledge</source>
        <translation>Antwort als Broadcast zulassen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Device Discovery Command Option</source>
        <translation>Optionen der Gerätesuche</translation>
    </message>
</context>
<context>
    <name>KxApi::CDisplayDeviceSelectionPartDlg</name>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Show not &amp;accessible devices</source>
        <translation>Nicht &amp;zugängliche Geräte zeigen</translation>
    </message>
</context>
<context>
    <name>KxApi::CDisplayGraphPartDlg</name>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Image file ...</source>
        <translation>&amp;Bilddatei ...</translation>
    </message>
    <message>
        <source>&amp;Graph data file ...</source>
        <translation>&amp;Diagrammdaten ...</translation>
    </message>
    <message>
        <source>Context menu</source>
        <translation>Kontextmenü</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Status Bar</source>
        <translation>Statusleiste</translation>
    </message>
</context>
<context>
    <name>KxApi::CDisplayImageWidget</name>
    <message>
        <source>Could not convert/display.</source>
        <translation>Kann nicht umgewandelt oder gezeigt werden.</translation>
    </message>
</context>
<context>
    <name>KxApi::CDisplayNodeMapPartDlg</name>
    <message>
        <source>Beginner</source>
        <translation>Einsteiger</translation>
    </message>
    <message>
        <source>&amp;Beginner</source>
        <translation>&amp;Einsteiger</translation>
    </message>
    <message>
        <source>Expert</source>
        <translation>Experte</translation>
    </message>
    <message>
        <source>&amp;Expert</source>
        <translation>E&amp;xperte</translation>
    </message>
    <message>
        <source>Guru</source>
        <translation>Guru</translation>
    </message>
    <message>
        <source>&amp;Guru</source>
        <translation>&amp;Guru</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Alphabetic Mode</source>
        <translation>&amp;Alphabetisch</translation>
    </message>
    <message>
        <source>&amp;Expand</source>
        <translation>A&amp;ufklappen</translation>
    </message>
    <message>
        <source>&amp;Collapse</source>
        <translation>&amp;Zuklappen</translation>
    </message>
    <message>
        <source>&amp;Refresh</source>
        <translation>&amp;Neu lesen</translation>
    </message>
    <message>
        <source>&amp;Polling</source>
        <translation>A&amp;bfragen</translation>
    </message>
    <message>
        <source>&amp;Visibility</source>
        <translation>&amp;Sichtbarkeit</translation>
    </message>
    <message>
        <source>&amp;Description</source>
        <translation>&amp;Beschreibung</translation>
    </message>
</context>
<context>
    <name>KxApi::CImageMenus</name>
    <message>
        <source>x 16</source>
        <translation>x 16</translation>
    </message>
    <message>
        <source>x 15</source>
        <translation>x 15</translation>
    </message>
    <message>
        <source>x 14</source>
        <translation>x 14</translation>
    </message>
    <message>
        <source>x 13</source>
        <translation>x 13</translation>
    </message>
    <message>
        <source>x 12</source>
        <translation>x 12</translation>
    </message>
    <message>
        <source>x 11</source>
        <translation>x 11</translation>
    </message>
    <message>
        <source>x 10</source>
        <translation>x 10</translation>
    </message>
    <message>
        <source>x 9</source>
        <translation>x 9</translation>
    </message>
    <message>
        <source>x 8</source>
        <translation>x 8</translation>
    </message>
    <message>
        <source>x 4</source>
        <translation>x 4</translation>
    </message>
    <message>
        <source>x 2</source>
        <translation>x 2</translation>
    </message>
    <message>
        <source>x 1</source>
        <translation>x 1</translation>
    </message>
    <message>
        <source>x 1/2</source>
        <translation>x 1/2</translation>
    </message>
    <message>
        <source>x 1/4</source>
        <translation>x 1/4</translation>
    </message>
    <message>
        <source>x 1/8</source>
        <translation>x 1/8</translation>
    </message>
    <message>
        <source>&amp;OFF</source>
        <translation>&amp;Aus</translation>
    </message>
    <message>
        <source>&amp;Mono</source>
        <translation>&amp;Mono</translation>
    </message>
    <message>
        <source>&amp;Nearest Neighbor</source>
        <translation>&amp;Nächster Nachbar</translation>
    </message>
    <message>
        <source>N&amp;earest Neighbor 2</source>
        <translation>Nä&amp;chster Nachbar 2</translation>
    </message>
    <message>
        <source>&amp;Bilinear</source>
        <translation>&amp;Bilinear</translation>
    </message>
    <message>
        <source>&amp;Bilinear 2</source>
        <translation>&amp;Bilinear 2</translation>
    </message>
    <message>
        <source>&amp;Bilinear 3</source>
        <translation>&amp;Bilinear 3</translation>
    </message>
    <message>
        <source>Bi&amp;cubic</source>
        <translation>Bi&amp;kubisch</translation>
    </message>
    <message>
        <source>Context menu</source>
        <translation>Kontextmenü</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Zoom</source>
        <translation>&amp;Zoom</translation>
    </message>
    <message>
        <source>&amp;Fixed Zoom</source>
        <translation>&amp;Fester Zoom</translation>
    </message>
    <message>
        <source>&amp;Pixel Converter</source>
        <translation>&amp;Pixelumwandlung</translation>
    </message>
    <message>
        <source>&amp;Bayer Interpolation</source>
        <translation>&amp;Bayer-Interpolation</translation>
    </message>
    <message>
        <source>Fit To The &amp;Window</source>
        <translation>Ins &amp;Fenster einpassen</translation>
    </message>
    <message>
        <source>&amp;Reverse Y</source>
        <translation>&amp;Senkrecht spiegeln</translation>
    </message>
    <message>
        <source>&amp;Registered Image</source>
        <translation>&amp;Kamerabild</translation>
    </message>
    <message>
        <source>&amp;Preview Image</source>
        <translation>&amp;Angezeigtes Bild</translation>
    </message>
</context>
<context>
    <name>KxApi::CNodeMapQtPropertyGridCtrl</name>
    <message>
        <source>Node</source>
        <translation>Knoten</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>Wert</translation>
    </message>
</context>
<context>
    <name>KxDrawBrushConfigDlg</name>
    <message>
        <source>Brush</source>
        <translation>Füllung</translation>
    </message>
    <message>
        <source>Style</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Null</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>Durchgezogen</translation>
    </message>
    <message>
        <source>Hatch Horizontal</source>
        <translation>Waagrecht schraffiert</translation>
    </message>
    <message>
        <source>Hatch Vertical</source>
        <translation>Senkrecht schraffiert</translation>
    </message>
    <message>
        <source>Hatch FDiagonal</source>
        <translation>Diagonal schraffiert</translation>
    </message>
    <message>
        <source>Hatch BDiagonal</source>
        <translation>Gegendiagonal schraffiert</translation>
    </message>
    <message>
        <source>Hatch Cross</source>
        <translation>Kreuzschraffur</translation>
    </message>
    <message>
        <source>Hatch DiagCross</source>
        <translation>Diagonale Kreuzschraffur</translation>
    </message>
    <message>
        <source>Foreground Color</source>
        <translation>Vordergrundfarbe</translation>
    </message>
    <message>
        <source>Background Mode</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Transparent</source>
        <translation>Durchsichtig</translation>
    </message>
    <message>
        <source>Opaque</source>
        <translation>Deckend</translation>
    </message>
    <message>
        <source>Background Color</source>
        <translation>Hintergrundfarbe</translation>
    </message>
    <message>
        <source>Polly Fill Mode</source>
        <translation>Füllregel</translation>
    </message>
    <message>
        <source>Alternate</source>
        <translation>Abwechselnd</translation>
    </message>
    <message>
        <source>Winding</source>
        <translation>Umlaufzahl</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Muster</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>KxDrawFontConfigDlg</name>
    <message>
        <source>Font</source>
        <translation>Schrift</translation>
    </message>
    <message>
        <source>Height</source>
        <translation>Höhe</translation>
    </message>
    <message>
        <source>Weight</source>
        <translation>Stärke</translation>
    </message>
    <message>
        <source>Normal</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>Style</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Kursiv</translation>
    </message>
    <message>
        <source>Decoration</source>
        <translation>Auszeichnung</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Underline</source>
        <translation>Unterstrichen</translation>
    </message>
    <message>
        <source>Linethrough</source>
        <translation>Durchgestrichen</translation>
    </message>
    <message>
        <source>Foreground Color</source>
        <translation>Vordergrundfarbe</translation>
    </message>
    <message>
        <source>Background Mode</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Transparent</source>
        <translation>Durchsichtig</translation>
    </message>
    <message>
        <source>Opaque</source>
        <translation>Deckend</translation>
    </message>
    <message>
        <source>Background Color</source>
        <translation>Hintergrundfarbe</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Muster</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>KxDrawLineConfigDlg</name>
    <message>
        <source>Line</source>
        <translation>Linie</translation>
    </message>
    <message>
        <source>Width</source>
        <translation>Breite</translation>
    </message>
    <message>
        <source>Endcap</source>
        <translation>Ende</translation>
    </message>
    <message>
        <source>Round</source>
        <translation>Rund</translation>
    </message>
    <message>
        <source>Square</source>
        <translation>Quadratisch</translation>
    </message>
    <message>
        <source>Flat</source>
        <translation>Flach</translation>
    </message>
    <message>
        <source>Style</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Solid</source>
        <translation>Durchgezogen</translation>
    </message>
    <message>
        <source>Dash</source>
        <translation>Gestrichelt</translation>
    </message>
    <message>
        <source>Dot</source>
        <translation>Gepunktet</translation>
    </message>
    <message>
        <source>DashDot</source>
        <translation>Strichpunkt</translation>
    </message>
    <message>
        <source>DashDotDot</source>
        <translation>Strich-Punkt-Punkt</translation>
    </message>
    <message>
        <source>Join</source>
        <translation>Ecke</translation>
    </message>
    <message>
        <source>Bevel</source>
        <translation>Abgeschrägt</translation>
    </message>
    <message>
        <source>Miter</source>
        <translation>Spitz</translation>
    </message>
    <message>
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Sample</source>
        <translation>Muster</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 gibt es schon.
Soll es ersetzt werden?</translation>
    </message>
</context>
</TS>

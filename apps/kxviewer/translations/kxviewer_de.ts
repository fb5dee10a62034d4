<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>Actions</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Camera</source>
        <translation>&amp;Kamera</translation>
    </message>
    <message>
        <source>&amp;Acquisition</source>
        <translation>Auf&amp;nahme</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Acquisition</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Drawing</source>
        <translation>Zeichnen</translation>
    </message>
    <message>
        <source>Region of the camera: %1 x %2 at %3, %4</source>
        <translation>Bildausschnitt der Kamera: %1 x %2 bei %3, %4</translation>
    </message>
    <message>
        <source>Save a s&amp;napshot</source>
        <translation>Sch&amp;nappschuss speichern</translation>
    </message>
    <message>
        <source>The image can't be saved.</source>
        <translation>Das Bild kann nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>%1 gespeichert</translation>
    </message>
    <message>
        <source>Save image &amp;as...</source>
        <translation>Bild speichern &amp;unter...</translation>
    </message>
    <message>
        <source>Save image</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>&amp;Copy image</source>
        <translation>Bild &amp;kopieren</translation>
    </message>
    <message>
        <source>The image can't be copied.</source>
        <translation>Das Bild kann nicht kopiert werden.</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Fit to the window</source>
        <translation>Ins &amp;Fenster einpassen</translation>
    </message>
    <message>
        <source>Zoom &amp;100 %</source>
        <translation>Zoom &amp;100 %</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation>Ver&amp;größern</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>Nach links</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>Nach rechts</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <source>Page up</source>
        <translation>Eine Seite nach oben</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>Eine Seite nach unten</translation>
    </message>
    <message>
        <source>Page left</source>
        <translation>Eine Seite nach links</translation>
    </message>
    <message>
        <source>Page right</source>
        <translation>Eine Seite nach rechts</translation>
    </message>
    <message>
        <source>Mark over- and under-&amp;exposure</source>
        <translation>Über- und Unter&amp;belichtung markieren</translation>
    </message>
    <message>
        <source>&amp;Values in the pixels from 3200 %</source>
        <translation>&amp;Werte in den Pixeln ab 3200 %</translation>
    </message>
    <message>
        <source>&amp;Grid over the image</source>
        <translation>G&amp;itter über dem Bild</translation>
    </message>
    <message>
        <source>Cameras &amp;side by side</source>
        <translation>Kameras &amp;nebeneinander</translation>
    </message>
    <message>
        <source>F&amp;ull screen</source>
        <translation>&amp;Vollbild</translation>
    </message>
    <message>
        <source>Leave the full screen</source>
        <translation>Vollbild verlassen</translation>
    </message>
    <message>
        <source>&amp;Dark colours</source>
        <translation>&amp;Dunkle Farben</translation>
    </message>
    <message>
        <source>&amp;Choose a camera...</source>
        <translation>Kamera &amp;wählen...</translation>
    </message>
    <message>
        <source>Clos&amp;e the camera</source>
        <translation>Kamera &amp;schließen</translation>
    </message>
    <message>
        <source>Set the features of %1</source>
        <translation>Einstellungen aus %1 gesetzt</translation>
    </message>
    <message>
        <source>The features can't be saved.</source>
        <translation>Die Einstellungen können nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Not all features could be set.</source>
        <translation>Nicht alle Einstellungen konnten gesetzt werden.</translation>
    </message>
    <message>
        <source>Features (*.txt)</source>
        <translation>Einstellungen (*.txt)</translation>
    </message>
    <message>
        <source>&amp;Save features of this camera</source>
        <translation>&amp;Einstellungen dieser Kamera speichern</translation>
    </message>
    <message>
        <source>&amp;Load features of this camera</source>
        <translation>Einstellungen dieser Kamera &amp;laden</translation>
    </message>
    <message>
        <source>Save features for this &amp;model</source>
        <translation>Einstellungen für dieses &amp;Modell speichern</translation>
    </message>
    <message>
        <source>Load features for this m&amp;odel</source>
        <translation>Einstellungen für dieses M&amp;odell laden</translation>
    </message>
    <message>
        <source>Save features to a &amp;file...</source>
        <translation>Einstellungen in eine &amp;Datei speichern...</translation>
    </message>
    <message>
        <source>Save features</source>
        <translation>Einstellungen speichern</translation>
    </message>
    <message>
        <source>Load features from a f&amp;ile...</source>
        <translation>Einstellungen aus einer Da&amp;tei laden...</translation>
    </message>
    <message>
        <source>Load features</source>
        <translation>Einstellungen laden</translation>
    </message>
    <message>
        <source>Load saved features when a camera is o&amp;pened</source>
        <translation>Gespeicherte Einstellungen beim &amp;Öffnen laden</translation>
    </message>
    <message>
        <source>The region can't be set.</source>
        <translation>Der Bildausschnitt kann nicht gesetzt werden.</translation>
    </message>
    <message>
        <source>Set camera &amp;region to selection</source>
        <translation>&amp;Ausschnitt der Kamera auf die Auswahl setzen</translation>
    </message>
    <message>
        <source>F&amp;ull region of the camera</source>
        <translation>&amp;Voller Ausschnitt der Kamera</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Start</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>S&amp;topp</translation>
    </message>
    <message>
        <source>The acquisition didn't stop as it should.</source>
        <translation>Die Aufnahme wurde nicht ordentlich beendet.</translation>
    </message>
    <message>
        <source>S&amp;ingle image</source>
        <translation>&amp;Einzelbild</translation>
    </message>
    <message>
        <source>The acquisition can't be started.</source>
        <translation>Die Aufnahme kann nicht gestartet werden.</translation>
    </message>
    <message>
        <source>Software t&amp;rigger</source>
        <translation>Software-T&amp;rigger</translation>
    </message>
    <message>
        <source>The camera can't be triggered.</source>
        <translation>Die Kamera kann nicht ausgelöst werden.</translation>
    </message>
    <message>
        <source>&amp;No tool: drag the image</source>
        <translation>&amp;Kein Werkzeug: Bild ziehen</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>&amp;Auswählen</translation>
    </message>
    <message>
        <source>&amp;Line</source>
        <translation>&amp;Linie</translation>
    </message>
    <message>
        <source>&amp;Rectangle</source>
        <translation>&amp;Rechteck</translation>
    </message>
    <message>
        <source>&amp;Ellipse</source>
        <translation>&amp;Ellipse</translation>
    </message>
    <message>
        <source>&amp;Text</source>
        <translation>&amp;Text</translation>
    </message>
    <message>
        <source>&amp;Angle</source>
        <translation>&amp;Winkel</translation>
    </message>
    <message>
        <source>&amp;Polygon</source>
        <translation>&amp;Polygon</translation>
    </message>
    <message>
        <source>Perpen&amp;dicular</source>
        <translation>L&amp;ot</translation>
    </message>
    <message>
        <source>Ar&amp;c</source>
        <translation>&amp;Bogen</translation>
    </message>
    <message>
        <source>Be&amp;zier curve</source>
        <translation>Béz&amp;ierkurve</translation>
    </message>
    <message>
        <source>&amp;Freehand</source>
        <translation>&amp;Freihand</translation>
    </message>
    <message>
        <source>Cr&amp;oss</source>
        <translation>Kre&amp;uz</translation>
    </message>
    <message>
        <source>Put docks and toolbars &amp;back</source>
        <translation>Fenster und Leisten &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Mouse and keys</source>
        <translation>&amp;Maus und Tasten</translation>
    </message>
    <message>
        <source>&amp;About the viewer</source>
        <translation>Ü&amp;ber den Betrachter</translation>
    </message>
    <message>
        <source>The diagnostic archive can't be made.</source>
        <translation>Das Diagnosearchiv kann nicht erstellt werden.</translation>
    </message>
    <message>
        <source>&amp;Diagnostic archive...</source>
        <translation>&amp;Diagnosearchiv...</translation>
    </message>
    <message>
        <source>Save diagnostic archive</source>
        <translation>Diagnosearchiv speichern</translation>
    </message>
    <message>
        <source>Archives (*.zip)</source>
        <translation>Archive (*.zip)</translation>
    </message>
    <message>
        <source>No diagnostic archive was made</source>
        <translation>Es wurde kein Diagnosearchiv erstellt</translation>
    </message>
</context>
<context>
    <name>CameraView</name>
    <message>
        <source>Camera image</source>
        <translation>Kamerabild</translation>
    </message>
    <message>
        <source>No camera</source>
        <translation>Keine Kamera</translation>
    </message>
</context>
<context>
    <name>Controls</name>
    <message>
        <source>Exposure</source>
        <translation>Belichtung</translation>
    </message>
    <message>
        <source>Automatic</source>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Gain</source>
        <translation>Verstärkung</translation>
    </message>
    <message>
        <source>Black level</source>
        <translation>Schwarzwert</translation>
    </message>
    <message>
        <source>Gamma</source>
        <translation>Gamma</translation>
    </message>
    <message>
        <source>White balance</source>
        <translation>Weißabgleich</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>Kanal</translation>
    </message>
    <message>
        <source>Ratio</source>
        <translation>Faktor</translation>
    </message>
    <message>
        <source>Acquisition</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Pixel format</source>
        <translation>Pixelformat</translation>
    </message>
    <message>
        <source>Trigger</source>
        <translation>Trigger</translation>
    </message>
    <message>
        <source>Trigger source</source>
        <translation>Triggerquelle</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>Colour map</source>
        <translation>Farbtabelle</translation>
    </message>
    <message>
        <source>Inverted</source>
        <translation>Invertiert</translation>
    </message>
    <message>
        <source>Phase</source>
        <translation>Phase</translation>
    </message>
    <message>
        <source>Bayer</source>
        <translation>Bayer</translation>
    </message>
    <message>
        <source>Display gamma</source>
        <translation>Anzeigegamma</translation>
    </message>
    <message>
        <source>Polarisation</source>
        <translation>Polarisation</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
</context>
<context>
    <name>ControlsDock</name>
    <message>
        <source>Controls</source>
        <translation>Regler</translation>
    </message>
</context>
<context>
    <name>DeviceDialog</name>
    <message>
        <source>Search &amp;again</source>
        <translation>Erneut &amp;suchen</translation>
    </message>
    <message>
        <source>Choose a camera</source>
        <translation>Kamera wählen</translation>
    </message>
    <message>
        <source>Looking for cameras every five seconds.</source>
        <translation>Alle fünf Sekunden wird nach Kameras gesucht.</translation>
    </message>
    <message>
        <source>The search has ended: %1</source>
        <translation>Die Suche wurde abgebrochen: %1</translation>
    </message>
    <message numerus="yes">
        <source>%n camera(s) that can't be opened are hidden; the check box shows them.</source>
        <translation><numerusform>Eine Kamera, die nicht geöffnet werden kann, ist verborgen; das Kästchen zeigt sie.</numerusform><numerusform>%n Kameras, die nicht geöffnet werden können, sind verborgen; das Kästchen zeigt sie.</numerusform></translation>
    </message>
</context>
<context>
    <name>DiagnosticArchive</name>
    <message>
        <source>The diagnostic archive is being made...</source>
        <translation>Das Diagnosearchiv wird erstellt...</translation>
    </message>
    <message numerus="yes">
        <source>%1 hasn't told anything for %n second(s).</source>
        <translation><numerusform>%1 hat seit einer Sekunde nichts gemeldet.</numerusform><numerusform>%1 hat seit %n Sekunden nichts gemeldet.</numerusform></translation>
    </message>
</context>
<context>
    <name>FeatureDock</name>
    <message>
        <source>Camera</source>
        <translation>Kamera</translation>
    </message>
    <message>
        <source>Host side of the camera</source>
        <translation>Rechnerseite der Kamera</translation>
    </message>
    <message>
        <source>Stream</source>
        <translation>Datenstrom</translation>
    </message>
    <message>
        <source>Interface</source>
        <translation>Schnittstelle</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Features</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Image window</source>
        <translation>Bildfenster</translation>
    </message>
    <message>
        <source>This window</source>
        <translation>Dieses Fenster</translation>
    </message>
</context>
<context>
    <name>FeatureEditor</name>
    <message>
        <source>From %1 to %2</source>
        <translation>Von %1 bis %2</translation>
    </message>
</context>
<context>
    <name>FeaturePanel</name>
    <message>
        <source>not implemented</source>
        <translation>nicht vorhanden</translation>
    </message>
    <message>
        <source>can't be read</source>
        <translation>nicht lesbar</translation>
    </message>
    <message>
        <source>hidden: %1</source>
        <translation>verborgen: %1</translation>
    </message>
    <message>
        <source>Whose features are shown</source>
        <translation>Wessen Einstellungen gezeigt werden</translation>
    </message>
    <message>
        <source>Set the features of a file</source>
        <translation>Einstellungen einer Datei setzen</translation>
    </message>
    <message>
        <source>Save all features in a file</source>
        <translation>Alle Einstellungen in eine Datei speichern</translation>
    </message>
    <message>
        <source>Search all features, shown or not</source>
        <translation>Alle Einstellungen durchsuchen, auch verborgene</translation>
    </message>
    <message>
        <source>Feature</source>
        <translation>Einstellung</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>Gefunden</translation>
    </message>
    <message>
        <source>Features that were found</source>
        <translation>Gefundene Einstellungen</translation>
    </message>
    <message>
        <source>Changed since connected (double click puts it back):</source>
        <translation>Seit dem Verbinden geändert (Doppelklick stellt zurück):</translation>
    </message>
    <message>
        <source>It can&apos;t be put back now: it is locked, as features of the image are while the camera acquires</source>
        <translation>Jetzt nicht zurückstellbar: gesperrt, wie Einstellungen des Bildes während der Aufnahme</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>Now</source>
        <translation>Jetzt</translation>
    </message>
    <message>
        <source>Changed features</source>
        <translation>Geänderte Einstellungen</translation>
    </message>
    <message>
        <source>That didn't work.</source>
        <translation>Das ist nicht gelungen.</translation>
    </message>
    <message>
        <source>Favourites</source>
        <translation>Favoriten</translation>
    </message>
    <message>
        <source>shown</source>
        <translation>gezeigt</translation>
    </message>
    <message>
        <source>%1 found, %2 of them hidden; double click shows one</source>
        <translation>%1 gefunden, davon %2 verborgen; Doppelklick zeigt eine</translation>
    </message>
    <message>
        <source>Remove from favourites</source>
        <translation>Aus den Favoriten entfernen</translation>
    </message>
    <message>
        <source>Add to favourites</source>
        <translation>Zu den Favoriten</translation>
    </message>
    <message>
        <source>Copy as kx line</source>
        <translation>Als kx-Zeile kopieren</translation>
    </message>
    <message>
        <source>Copy as C++</source>
        <translation>Als C++ kopieren</translation>
    </message>
    <message>
        <source>Copy name</source>
        <translation>Namen kopieren</translation>
    </message>
    <message>
        <source>Save features</source>
        <translation>Einstellungen speichern</translation>
    </message>
    <message>
        <source>Features (*.txt)</source>
        <translation>Einstellungen (*.txt)</translation>
    </message>
    <message>
        <source>Set features</source>
        <translation>Einstellungen setzen</translation>
    </message>
</context>
<context>
    <name>GraphDock</name>
    <message>
        <source>Mean</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>Dev.</source>
        <translation>Abw.</translation>
    </message>
    <message>
        <source>Min</source>
        <translation>Min</translation>
    </message>
    <message>
        <source>Max</source>
        <translation>Max</translation>
    </message>
    <message>
        <source>% min</source>
        <translation>% min</translation>
    </message>
    <message>
        <source>% max</source>
        <translation>% max</translation>
    </message>
    <message>
        <source>Figures of the plot</source>
        <translation>Zahlen zum Diagramm</translation>
    </message>
    <message>
        <source>Mean, standard deviation, least and greatest value, and the parts of the values that stand at the two ends of the scale</source>
        <translation>Mittelwert, Standardabweichung, kleinster und größter Wert und die Anteile der Werte an den beiden Enden der Skala</translation>
    </message>
    <message>
        <source>There is no image yet</source>
        <translation>Es gibt noch kein Bild</translation>
    </message>
</context>
<context>
    <name>Help</name>
    <message>
        <source>Drag</source>
        <translation>Ziehen</translation>
    </message>
    <message>
        <source>moves the image while no drawing tool is chosen</source>
        <translation>verschiebt das Bild, solange kein Zeichenwerkzeug gewählt ist</translation>
    </message>
    <message>
        <source>Middle button</source>
        <translation>Mittlere Taste</translation>
    </message>
    <message>
        <source>moves the image always</source>
        <translation>verschiebt das Bild immer</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Rad</translation>
    </message>
    <message>
        <source>scrolls up and down</source>
        <translation>rollt auf und ab</translation>
    </message>
    <message>
        <source>Ctrl and wheel</source>
        <translation>Strg und Rad</translation>
    </message>
    <message>
        <source>zooms where the mouse is</source>
        <translation>zoomt an der Stelle der Maus</translation>
    </message>
    <message>
        <source>Right button</source>
        <translation>Rechte Taste</translation>
    </message>
    <message>
        <source>opens the menu of the image, or of what is drawn on it</source>
        <translation>öffnet das Menü des Bildes oder dessen, was darauf gezeichnet ist</translation>
    </message>
    <message>
        <source>Mouse and keys</source>
        <translation>Maus und Tasten</translation>
    </message>
    <message>
        <source>Mouse over the image</source>
        <translation>Maus über dem Bild</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>About the viewer</source>
        <translation>Über den Betrachter</translation>
    </message>
    <message>
        <source>KxApi viewer %1</source>
        <translation>KxApi-Betrachter %1</translation>
    </message>
    <message>
        <source>Live images of GenICam cameras in the windows of KxApi.
Apache License 2.0</source>
        <translation>Livebilder von GenICam-Kameras in den Fenstern von KxApi.
Apache License 2.0</translation>
    </message>
</context>
<context>
    <name>HistogramDock</name>
    <message>
        <source>Histogram</source>
        <translation>Histogramm</translation>
    </message>
    <message>
        <source>Whole image, %1 x %2</source>
        <translation>Ganzes Bild, %1 x %2</translation>
    </message>
    <message>
        <source>Selected rectangle at %1, %2: %3 x %4</source>
        <translation>Ausgewähltes Rechteck bei %1, %2: %3 x %4</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>%1 - KxApi viewer</source>
        <translation>%1 - KxApi-Betrachter</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>This window</source>
        <translation>Dieses Fenster</translation>
    </message>
    <message>
        <source>KxApi viewer</source>
        <translation>KxApi-Betrachter</translation>
    </message>
    <message>
        <source>The camera can't be opened.</source>
        <translation>Die Kamera kann nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Not all features of %1 could be set.</source>
        <translation>Nicht alle Einstellungen aus %1 konnten gesetzt werden.</translation>
    </message>
    <message>
        <source>The acquisition can't be started.</source>
        <translation>Die Aufnahme kann nicht gestartet werden.</translation>
    </message>
    <message>
        <source>No camera is open</source>
        <translation>Keine Kamera geöffnet</translation>
    </message>
    <message>
        <source>Looking for cameras...</source>
        <translation>Kameras werden gesucht...</translation>
    </message>
</context>
<context>
    <name>ObjectsDock</name>
    <message>
        <source>Measurements</source>
        <translation>Messwerte</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Save as CSV...</source>
        <translation>Als CSV speichern...</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Area</source>
        <translation>Fläche</translation>
    </message>
    <message>
        <source>Angle</source>
        <translation>Winkel</translation>
    </message>
    <message>
        <source>Position</source>
        <translation>Lage</translation>
    </message>
    <message>
        <source>Save measurements</source>
        <translation>Messwerte speichern</translation>
    </message>
    <message>
        <source>Comma separated values (*.csv)</source>
        <translation>Kommagetrennte Werte (*.csv)</translation>
    </message>
    <message>
        <source>Cannot save %1: %2</source>
        <translation>%1 kann nicht gespeichert werden: %2</translation>
    </message>
</context>
<context>
    <name>ProfileDock</name>
    <message>
        <source>Line profile</source>
        <translation>Linienprofil</translation>
    </message>
    <message>
        <source>Selected line</source>
        <translation>Ausgewählte Linie</translation>
    </message>
    <message>
        <source>Middle row; select a drawn line to see another</source>
        <translation>Mittlere Zeile; eine gezeichnete Linie wählen, um eine andere zu sehen</translation>
    </message>
    <message>
        <source> (%1, %2 to %3, %4)</source>
        <translation> (%1, %2 bis %3, %4)</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>no limit</source>
        <translation>unbegrenzt</translation>
    </message>
</context>
<context>
    <name>RecordingDock</name>
    <message>
        <source>Recording</source>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Aufzeichnen</translation>
    </message>
    <message>
        <source>Images at most</source>
        <translation>Höchstens Bilder</translation>
    </message>
    <message>
        <source>Seconds at most</source>
        <translation>Höchstens Sekunden</translation>
    </message>
    <message>
        <source> s</source>
        <translation> s</translation>
    </message>
    <message>
        <source>Megabytes at most</source>
        <translation>Höchstens Megabyte</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>Save the images that come from now on</source>
        <translation>Ab jetzt alle Bilder speichern</translation>
    </message>
    <message>
        <source>Fill of the queue</source>
        <translation>Füllung der Warteschlange</translation>
    </message>
    <message>
        <source>Images that wait to be written; when it is full, images are lost</source>
        <translation>Bilder, die noch geschrieben werden; ist sie voll, gehen Bilder verloren</translation>
    </message>
    <message>
        <source>queue %p%</source>
        <translation>Schlange %p%</translation>
    </message>
    <message>
        <source>Images:</source>
        <translation>Bilder:</translation>
    </message>
    <message>
        <source>Time:</source>
        <translation>Zeit:</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>Größe:</translation>
    </message>
    <message>
        <source>Ends after</source>
        <translation>Endet nach</translation>
    </message>
    <message>
        <source>Writing</source>
        <translation>Schreibt</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gespeichert</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Fehlgeschlagen</translation>
    </message>
    <message>
        <source>The recording can't be started.</source>
        <translation>Die Aufzeichnung kann nicht begonnen werden.</translation>
    </message>
    <message>
        <source>The recording broke off: %1</source>
        <translation>Die Aufzeichnung brach ab: %1</translation>
    </message>
    <message numerus="yes">
        <source>Recorded %n image(s), %1 lost: %2</source>
        <translation><numerusform>Ein Bild aufgezeichnet, %1 verloren: %2</numerusform><numerusform>%n Bilder aufgezeichnet, %1 verloren: %2</numerusform></translation>
    </message>
    <message numerus="yes">
        <source>%n image(s), %1 MB written, %2 MB/s; %3 waiting, %4 lost, %5 incomplete</source>
        <translation><numerusform>Ein Bild, %1 MB geschrieben, %2 MB/s; %3 wartend, %4 verloren, %5 unvollständig</numerusform><numerusform>%n Bilder, %1 MB geschrieben, %2 MB/s; %3 wartend, %4 verloren, %5 unvollständig</numerusform></translation>
    </message>
</context>
<context>
    <name>RecordingTarget</name>
    <message>
        <source>One file of all images (kxseq)</source>
        <translation>Eine Datei für alle Bilder (kxseq)</translation>
    </message>
    <message>
        <source>PNG files</source>
        <translation>PNG-Dateien</translation>
    </message>
    <message>
        <source>TIFF files</source>
        <translation>TIFF-Dateien</translation>
    </message>
    <message>
        <source>BMP files</source>
        <translation>BMP-Dateien</translation>
    </message>
    <message>
        <source>JPEG files</source>
        <translation>JPEG-Dateien</translation>
    </message>
    <message>
        <source>Raw files (kxraw)</source>
        <translation>Rohdateien (kxraw)</translation>
    </message>
    <message>
        <source>CSV files</source>
        <translation>CSV-Dateien</translation>
    </message>
    <message>
        <source>Folder that recordings go into, under the camera's name and the time</source>
        <translation>Ordner für Aufzeichnungen, unter dem Namen der Kamera und der Zeit</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Kind of file</source>
        <translation>Dateiart</translation>
    </message>
    <message>
        <source>Choose the folder</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>Folder:</source>
        <translation>Ordner:</translation>
    </message>
    <message>
        <source>As:</source>
        <translation>Als:</translation>
    </message>
    <message>
        <source>Folder for recordings</source>
        <translation>Ordner für Aufzeichnungen</translation>
    </message>
</context>
<context>
    <name>RingPanel</name>
    <message>
        <source>Keep the last images in memory</source>
        <translation>Die letzten Bilder im Speicher behalten</translation>
    </message>
    <message>
        <source>Look at them</source>
        <translation>Ansehen</translation>
    </message>
    <message>
        <source>Save them</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source> s</source>
        <translation> s</translation>
    </message>
    <message>
        <source>Seconds to keep</source>
        <translation>Zu behaltende Sekunden</translation>
    </message>
    <message>
        <source> MB</source>
        <translation> MB</translation>
    </message>
    <message>
        <source>Memory to use</source>
        <translation>Zu nutzender Speicher</translation>
    </message>
    <message>
        <source>Hold the live image and step through what is in memory</source>
        <translation>Livebild anhalten und die Bilder im Speicher durchgehen</translation>
    </message>
    <message>
        <source>One image back</source>
        <translation>Ein Bild zurück</translation>
    </message>
    <message>
        <source>One image forward</source>
        <translation>Ein Bild vor</translation>
    </message>
    <message>
        <source>Image in the ring</source>
        <translation>Bild im Ring</translation>
    </message>
    <message>
        <source>in at most</source>
        <translation>in höchstens</translation>
    </message>
    <message>
        <source>Image %1 of %2, frame ID %3, %4 s before the last one</source>
        <translation>Bild %1 von %2, Bildnummer %3, %4 s vor dem letzten</translation>
    </message>
    <message>
        <source>the memory isn't enough for the time</source>
        <translation>der Speicher reicht für die Zeit nicht</translation>
    </message>
    <message numerus="yes">
        <source>%n image(s), %1 s, %2 MB</source>
        <translation><numerusform>Ein Bild, %1 s, %2 MB</numerusform><numerusform>%n Bilder, %1 s, %2 MB</numerusform></translation>
    </message>
</context>
<context>
    <name>ViewArea</name>
    <message>
        <source>Open cameras</source>
        <translation>Geöffnete Kameras</translation>
    </message>
    <message>
        <source>Close this camera</source>
        <translation>Diese Kamera schließen</translation>
    </message>
</context>
<context>
    <name>ViewerStatus</name>
    <message>
        <source>Pixel under the mouse</source>
        <translation>Pixel unter der Maus</translation>
    </message>
    <message>
        <source>Images from the camera, over the last second</source>
        <translation>Bilder von der Kamera in der letzten Sekunde</translation>
    </message>
    <message>
        <source>Images shown, over the last second</source>
        <translation>Gezeigte Bilder in der letzten Sekunde</translation>
    </message>
    <message>
        <source>Images that did not come since the start</source>
        <translation>Bilder, die seit dem Start fehlen</translation>
    </message>
    <message>
        <source>Images since the start of which parts are missing</source>
        <translation>Bilder seit dem Start, von denen Teile fehlen</translation>
    </message>
    <message>
        <source>Data from the camera, over the last second</source>
        <translation>Daten von der Kamera in der letzten Sekunde</translation>
    </message>
    <message>
        <source>%1 images/s</source>
        <translation>%1 Bilder/s</translation>
    </message>
    <message>
        <source>%1 shown/s</source>
        <translation>%1 gezeigt/s</translation>
    </message>
    <message>
        <source>%1 lost</source>
        <translation>%1 verloren</translation>
    </message>
    <message>
        <source>%1 incomplete</source>
        <translation>%1 unvollständig</translation>
    </message>
    <message>
        <source>%1 MB/s</source>
        <translation>%1 MB/s</translation>
    </message>
</context>
<context>
    <name>ZoomBox</name>
    <message>
        <source>Magnification</source>
        <translation>Vergrößerung</translation>
    </message>
</context>
</TS>

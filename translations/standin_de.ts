<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>QObject</name>
    <message>
        <source>Current frame</source>
        <translation>Aktuelles Bild</translation>
    </message>
    <message>
        <source>New animation</source>
        <translation>Neue Animation</translation>
    </message>
    <message>
        <source>&amp;Width</source>
        <translation>&amp;Breite</translation>
    </message>
    <message>
        <source> pixels</source>
        <translation> Pixel</translation>
    </message>
    <message>
        <source>&amp;Height</source>
        <translation>&amp;Höhe</translation>
    </message>
    <message>
        <source>&amp;Length</source>
        <translation>&amp;Länge</translation>
    </message>
    <message>
        <source> frames</source>
        <translation> Bilder</translation>
    </message>
    <message>
        <source>%1 by %2</source>
        <translation>%1 mal %2</translation>
    </message>
    <message>
        <source>The picture &quot;%1&quot; is %2, but the first one, &quot;%3&quot;, is %4. All frames of an animation have one size.</source>
        <translation>Das Bild „%1“ ist %2 groß, das erste, „%3“, aber %4. Alle Bilder einer Animation haben dieselbe Größe.</translation>
    </message>
    <message>
        <source>The picture &quot;%1&quot; is one frame too many.</source>
        <translation>Das Bild „%1“ ist eines zu viel.</translation>
    </message>
    <message>
        <source>The picture &quot;%1&quot; can&apos;t be read: %2.</source>
        <translation>Das Bild „%1“ kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>The picture &quot;%1&quot; can&apos;t be written: %2.</source>
        <translation>Das Bild „%1“ kann nicht geschrieben werden: %2.</translation>
    </message>
    <message>
        <source>There is no picture to open.</source>
        <translation>Da ist kein Bild zum Öffnen.</translation>
    </message>
    <message>
        <source>There is not enough memory for all of these pictures.</source>
        <translation>Der Speicher reicht nicht für alle diese Bilder.</translation>
    </message>
    <message>
        <source>There is not enough memory for all of these pictures. %1 would be needed, %2 are free.</source>
        <translation>Der Speicher reicht nicht für alle diese Bilder. Nötig wären %1, frei sind %2.</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>es ist keine gewöhnliche Datei</translation>
    </message>
</context>
<context>
    <name>host::BusService</name>
    <message>
        <source>There is no session bus, so no tool can reach these frames.</source>
        <translation>Es gibt keinen Sitzungsbus, also kann kein Werkzeug diese Bilder erreichen.</translation>
    </message>
    <message>
        <source>Another host is running already; tools go on working with that one.</source>
        <translation>Es läuft schon ein anderer Gastgeber; Werkzeuge arbeiten weiter mit jenem.</translation>
    </message>
</context>
<context>
    <name>host::StandInWindow</name>
    <message>
        <source>Open numbered pictures or an animation</source>
        <translation>Nummerierte Bilder oder eine Animation öffnen</translation>
    </message>
    <message>
        <source>Pictures (%1)</source>
        <translation>Bilder (%1)</translation>
    </message>
    <message>
        <source>Open a folder of pictures</source>
        <translation>Einen Ordner mit Bildern öffnen</translation>
    </message>
    <message>
        <source>There is no picture in the folder &quot;%1&quot;.</source>
        <translation>Im Ordner „%1“ ist kein Bild.</translation>
    </message>
    <message>
        <source>Opening pictures...</source>
        <translation>Bilder werden geöffnet …</translation>
    </message>
    <message>
        <source>Save as numbered pictures</source>
        <translation>Als nummerierte Bilder speichern</translation>
    </message>
    <message>
        <source>PNG pictures (*.png)</source>
        <translation>PNG-Bilder (*.png)</translation>
    </message>
    <message>
        <source>The picture %1 is already there. Replace it?</source>
        <translation>Das Bild %1 gibt es schon. Ersetzen?</translation>
    </message>
    <message>
        <source>%1 of the pictures are already there, %2 to %3. Replace them?</source>
        <translation>%1 der Bilder gibt es schon, %2 bis %3. Ersetzen?</translation>
    </message>
    <message>
        <source>Saving pictures...</source>
        <translation>Bilder werden gespeichert …</translation>
    </message>
    <message>
        <source>1 picture saved in %1</source>
        <translation>1 Bild gespeichert in %1</translation>
    </message>
    <message>
        <source>%1 pictures saved in %2</source>
        <translation>%1 Bilder gespeichert in %2</translation>
    </message>
    <message>
        <source>These frames aren&apos;t saved. Go on without them?</source>
        <translation>Diese Bilder sind nicht gespeichert. Ohne sie weitermachen?</translation>
    </message>
    <message>
        <source>A tool is at work with these frames. Try again when it has finished.</source>
        <translation>Ein Werkzeug arbeitet gerade mit diesen Bildern. Versuchen Sie es wieder, wenn es fertig ist.</translation>
    </message>
    <message>
        <source>A tool is at work with these frames and can&apos;t go on without them. Quit?</source>
        <translation>Ein Werkzeug arbeitet gerade mit diesen Bildern und kann ohne sie nicht weitermachen. Beenden?</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>Vorgabe</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Loud</source>
        <translation>Laut</translation>
    </message>
    <message>
        <source>linen</source>
        <translation>Leinen</translation>
    </message>
    <message>
        <source>night</source>
        <translation>Nacht</translation>
    </message>
    <message>
        <source>paper</source>
        <translation>Papier</translation>
    </message>
    <message>
        <source>slate</source>
        <translation>Schiefer</translation>
    </message>
    <message>
        <source>&amp;Animation</source>
        <translation>&amp;Animation</translation>
    </message>
    <message>
        <source>&amp;New...</source>
        <translation>&amp;Neu …</translation>
    </message>
    <message>
        <source>&amp;Open pictures...</source>
        <translation>Bilder &amp;öffnen …</translation>
    </message>
    <message>
        <source>Open &amp;folder...</source>
        <translation>&amp;Ordner öffnen …</translation>
    </message>
    <message>
        <source>&amp;Demonstration</source>
        <translation>&amp;Vorführung</translation>
    </message>
    <message>
        <source>&amp;Save as numbered pictures...</source>
        <translation>Als nummerierte Bilder &amp;speichern …</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Minimise</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>&amp;Frames</source>
        <translation>&amp;Bilder</translation>
    </message>
    <message>
        <source>Frame &amp;rate...</source>
        <translation>Bild&amp;rate …</translation>
    </message>
    <message>
        <source>&amp;Look</source>
        <translation>&amp;Aussehen</translation>
    </message>
    <message>
        <source>%1 colours</source>
        <translation>Farben: %1</translation>
    </message>
    <message>
        <source>No wallpaper</source>
        <translation>Kein Hintergrundbild</translation>
    </message>
    <message>
        <source>Wallpaper &quot;%1&quot;</source>
        <translation>Hintergrundbild „%1“</translation>
    </message>
    <message>
        <source>Own wallpaper...</source>
        <translation>Eigenes Hintergrundbild …</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>&amp;Werkzeuge</translation>
    </message>
    <message>
        <source>&amp;Exposure sheet...</source>
        <translation>&amp;Exposure Sheet …</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About the stand-in</source>
        <translation>Ü&amp;ber den Stellvertreter</translation>
    </message>
    <message>
        <source>About the stand-in</source>
        <translation>Über den Stellvertreter</translation>
    </message>
    <message>
        <source>Stand-in for the host of the exposure sheet, version %1.

It holds the frames that the exposure sheet works on where no drawing program does.</source>
        <translation>Stellvertreter für den Gastgeber des Exposure Sheets, Version %1.

Er hält die Bilder, mit denen das Exposure Sheet arbeitet, wo kein Zeichenprogramm es tut.</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; can&apos;t be started.</source>
        <translation>Das Programm „%1“ kann nicht gestartet werden.</translation>
    </message>
    <message>
        <source>The settings can&apos;t be written.</source>
        <translation>Die Einstellungen können nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>Choose a wallpaper</source>
        <translation>Ein Hintergrundbild wählen</translation>
    </message>
    <message>
        <source>Frame rate</source>
        <translation>Bildrate</translation>
    </message>
    <message>
        <source>Frames per second</source>
        <translation>Bilder pro Sekunde</translation>
    </message>
    <message>
        <source>First frame</source>
        <translation>Erstes Bild</translation>
    </message>
    <message>
        <source>One frame back</source>
        <translation>Ein Bild zurück</translation>
    </message>
    <message>
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message>
        <source>One frame on</source>
        <translation>Ein Bild weiter</translation>
    </message>
    <message>
        <source>Last frame</source>
        <translation>Letztes Bild</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Vellumark (stand-in)</source>
        <translation>Vellumark (Stellvertreter)</translation>
    </message>
    <message>
        <source>Current frame</source>
        <translation>Aktuelles Bild</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Frame %1</source>
        <translation>Bild %1</translation>
    </message>
    <message>
        <source>%1  ·  %2 × %3  ·  %4 fps</source>
        <translation>%1  ·  %2 × %3  ·  %4 B/s</translation>
    </message>
    <message>
        <source>1 frame</source>
        <translation>1 Bild</translation>
    </message>
    <message>
        <source>%1 frames</source>
        <translation>%1 Bilder</translation>
    </message>
    <message>
        <source>1 frame shot</source>
        <translation>1 Bild aufgenommen</translation>
    </message>
    <message>
        <source>%1 frames shot</source>
        <translation>%1 Bilder aufgenommen</translation>
    </message>
    <message>
        <source>1 frame retrieved</source>
        <translation>1 Bild abgeholt</translation>
    </message>
    <message>
        <source>%1 frames retrieved</source>
        <translation>%1 Bilder abgeholt</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
</context>
<context>
    <name>standin</name>
    <message>
        <source>Stands in for the drawing program that the exposure sheet works beside.</source>
        <translation>Vertritt das Zeichenprogramm, neben dem das Exposure Sheet arbeitet.</translation>
    </message>
</context>
</TS>

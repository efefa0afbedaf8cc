<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>convert</name>
    <message>
        <source>can&apos;t tell the format of %1 by its name (see --from)</source>
        <translation>das Format von %1 ist am Namen nicht zu erkennen (siehe --from)</translation>
    </message>
    <message>
        <source>can&apos;t tell the format of %1 by its name (see --to)</source>
        <translation>das Format von %1 ist am Namen nicht zu erkennen (siehe --to)</translation>
    </message>
    <message>
        <source>%1 can only be written</source>
        <translation>%1 kann nur geschrieben werden</translation>
    </message>
    <message>
        <source>%1 can only be read</source>
        <translation>%1 kann nur gelesen werden</translation>
    </message>
    <message>
        <source>a sound becomes a sound (.wav), a sheet a sheet</source>
        <translation>aus einem Ton wird ein Ton (.wav), aus einem Sheet ein Sheet</translation>
    </message>
    <message>
        <source>a text can only be laid along a sound (see --sound)</source>
        <translation>ein Text kann nur an einem Ton entlang gelegt werden (siehe --sound)</translation>
    </message>
    <message>
        <source>there is no format %1</source>
        <translation>ein Format %1 gibt es nicht</translation>
    </message>
    <message>
        <source>--rate: expected a number above 0, found %1</source>
        <translation>--rate: erwartet wird eine Zahl über 0, da steht %1</translation>
    </message>
    <message>
        <source>--paper: expected A4 or Letter, found %1</source>
        <translation>--paper: erwartet wird A4 oder Letter, da steht %1</translation>
    </message>
    <message>
        <source>%1 needs a value</source>
        <translation>%1 braucht einen Wert</translation>
    </message>
    <message>
        <source>there is no option %1</source>
        <translation>eine Option %1 gibt es nicht</translation>
    </message>
    <message>
        <source>expected an input and an output</source>
        <translation>erwartet werden eine Eingabe und eine Ausgabe</translation>
    </message>
    <message>
        <source>input and sound can&apos;t both come from the standard input</source>
        <translation>Eingabe und Ton können nicht beide von der Standardeingabe kommen</translation>
    </message>
    <message>
        <source>standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>standard output</source>
        <translation>Standardausgabe</translation>
    </message>
    <message>
        <source>%1 more like it</source>
        <translation>%1 weitere dieser Art</translation>
    </message>
    <message>
        <source>Usage: exposure-sheet-convert [OPTION]... INPUT OUTPUT
Takes an exposure sheet to other programs and back, prints it, lays a text along its sound.
INPUT and OUTPUT may be -, the standard input and output.</source>
        <translation>Aufruf: exposure-sheet-convert [OPTION]... EINGABE AUSGABE
Bringt ein Exposure Sheet in andere Programme und zurück, druckt es, legt einen Text an seinem Ton entlang.
EINGABE und AUSGABE dürfen - sein, die Standardein- und -ausgabe.</translation>
    </message>
    <message>
        <source>Formats, by the ending of the name or by --from and --to:
  exp    the exposure sheet itself
  dat    switch data, for Moho, OpenToonz, Blender and Synfig
  tsv    Rhubarb Lip Sync&apos;s cues; xml and json are read too
  pgo    Papagayo&apos;s project
  xdts   exchange digital time sheet
  csv    table with one row a frame
  pdf    the sheet on paper, written only; svg likewise
  wav    a sound that the tool opens, from any sound that can be read
  txt    words to lay along a sound, read only</source>
        <translation>Formate, nach der Endung des Namens oder nach --from und --to:
  exp    das Exposure Sheet selbst
  dat    Schalterdaten für Moho, OpenToonz, Blender und Synfig
  tsv    Marken von Rhubarb Lip Sync; auch xml und json werden gelesen
  pgo    Projekt von Papagayo
  xdts   Exchange Digital Time Sheet
  csv    Tabelle mit einer Zeile je Bild
  pdf    das Sheet auf Papier, wird nur geschrieben; svg ebenso
  wav    ein Ton, den das Werkzeug öffnet, aus jedem lesbaren Ton
  txt    Wörter, die an einem Ton entlang gelegt werden, wird nur gelesen</translation>
    </message>
    <message>
        <source>Options:
  --from FORMAT, --to FORMAT   the format of the input, of the output
  --rate NUMBER    frames per second of the sheet; a sheet at another rate is re-timed
  --sound FILE     the sheet&apos;s sound: its name, its length, its waveform
  --shapes FILE    a table of names in place of the one built in
  --print-shapes   prints the table built in, to begin one&apos;s own with
  --paper A4|Letter    for pdf and svg
  --language NAME  of a text&apos;s words, as the speech synthesizer names it (en-us)
  --rules          spells words by the rules for English, without the synthesizer
  --force          replaces an output that is there already
  --help, --version</source>
        <translation>Optionen:
  --from FORMAT, --to FORMAT   das Format der Eingabe, der Ausgabe
  --rate ZAHL      Bilder pro Sekunde des Sheets; ein Sheet mit anderer Rate wird umgerechnet
  --sound DATEI    der Ton des Sheets: sein Name, seine Länge, seine Wellenform
  --shapes DATEI   eine Tabelle von Namen statt der eingebauten
  --print-shapes   gibt die eingebaute Tabelle aus, als Anfang einer eigenen
  --paper A4|Letter    für pdf und svg
  --language NAME  der Wörter eines Textes, wie der Sprachsynthesizer sie nennt (en-us)
  --rules          buchstabiert nach den Regeln des Englischen, ohne den Synthesizer
  --force          ersetzt eine Ausgabe, die es schon gibt
  --help, --version</translation>
    </message>
    <message>
        <source>What a format can&apos;t hold is said on the error output.
The exit status is 0 if all went well, 1 if a file can&apos;t be read or written, 2 if the command line isn&apos;t understood.</source>
        <translation>Was ein Format nicht fassen kann, steht in der Fehlerausgabe.
Der Rückgabewert ist 0, wenn alles gelang, 1, wenn eine Datei nicht gelesen oder geschrieben werden kann, 2, wenn die Befehlszeile nicht verstanden wird.</translation>
    </message>
    <message>
        <source>is there already (see --force)</source>
        <translation>gibt es schon (siehe --force)</translation>
    </message>
    <message>
        <source>the tool opens wave files of 8 or 16 bits; make one of this sound with exposure-sheet-convert first</source>
        <translation>das Werkzeug öffnet Wave-Dateien mit 8 oder 16 Bit; machen Sie aus diesem Ton erst eine mit exposure-sheet-convert</translation>
    </message>
    <message>
        <source>the sound %1 can&apos;t be read; its waveform is left out</source>
        <translation>der Ton %1 kann nicht gelesen werden; seine Wellenform fehlt</translation>
    </message>
    <message>
        <source>--help tells more</source>
        <translation>--help sagt mehr</translation>
    </message>
    <message>
        <source>not enough memory</source>
        <translation>der Speicher reicht nicht</translation>
    </message>
    <message>
        <source>%1 mouths shorter than a frame are left out, the first at frame %2</source>
        <translation>%1 Münder, die kürzer als ein Bild sind, fehlen, der erste bei Bild %2</translation>
    </message>
    <message>
        <source>%1 entries behind the sheet&apos;s end, which is at frame %2, are left out</source>
        <translation>%1 Einträge hinter dem Ende des Sheets bei Bild %2 fehlen</translation>
    </message>
    <message>
        <source>line %1: a quotation mark opens a cell and none closes it</source>
        <translation>Zeile %1: ein Anführungszeichen öffnet eine Zelle, und keines schließt sie</translation>
    </message>
    <message>
        <source>the sound breaks off: of its %1 samples %2 can be read</source>
        <translation>der Ton bricht ab: von seinen %1 Samples sind %2 lesbar</translation>
    </message>
    <message>
        <source>the sound to lay it along is empty</source>
        <translation>der Ton, an den er gelegt werden soll, ist leer</translation>
    </message>
    <message>
        <source>words in the language %1 can&apos;t be spelled: the library of espeak-ng isn&apos;t there, or has no voice of that name</source>
        <translation>Wörter der Sprache %1 können nicht in Laute zerlegt werden: die Bibliothek von espeak-ng fehlt oder hat keine Stimme dieses Namens</translation>
    </message>
    <message>
        <source>a frame rate must not be negative</source>
        <translation>eine Bildrate darf nicht negativ sein</translation>
    </message>
    <message>
        <source>no frame rate is told; it is taken to be %1 (see --rate)</source>
        <translation>eine Bildrate ist nicht angegeben; angenommen wird %1 (siehe --rate)</translation>
    </message>
    <message>
        <source>it would make a sheet of %1 frames; without a sound that bears it out (see --sound) at most %2 are believed</source>
        <translation>daraus würde ein Sheet mit %1 Bildern; ohne einen Ton, der das bestätigt (siehe --sound), werden höchstens %2 geglaubt</translation>
    </message>
    <message>
        <source>the sheet can&apos;t be brought to that rate; it stays at %1</source>
        <translation>das Sheet kann nicht auf diese Rate gebracht werden; es bleibt bei %1</translation>
    </message>
    <message>
        <source>the comments are left out: the format has none</source>
        <translation>die Kommentare fehlen: das Format hat keine</translation>
    </message>
    <message>
        <source>the velocity tracks are left out: the format has none</source>
        <translation>die Geschwindigkeitsspuren fehlen: das Format hat keine</translation>
    </message>
    <message>
        <source>the lock and the tracks&apos; visibility are left out: the format has none</source>
        <translation>Kopplung und Sichtbarkeit der Spuren fehlen: das Format hat keine</translation>
    </message>
    <message>
        <source>the name of the sound, %1, is left out: the format has no place for it</source>
        <translation>der Name des Tons, %1, fehlt: das Format hat keinen Platz dafür</translation>
    </message>
    <message>
        <source>the frame rate, %1, is left out: the format has no place for it</source>
        <translation>die Bildrate, %1, fehlt: das Format hat keinen Platz dafür</translation>
    </message>
    <message>
        <source>%1 mouths that the table of names doesn&apos;t know are left out, the first at frame %2: %3</source>
        <translation>%1 Münder, die die Tabelle der Namen nicht kennt, fehlen, der erste bei Bild %2: %3</translation>
    </message>
    <message>
        <source>mouths that share a name in this format come back as the one in brackets: %1</source>
        <translation>Münder, die in diesem Format einen Namen teilen, kommen als der in Klammern zurück: %1</translation>
    </message>
    <message>
        <source>this is a draft: go through it by ear</source>
        <translation>das ist ein Entwurf: gehen Sie ihn nach Gehör durch</translation>
    </message>
    <message>
        <source>the words are spelled by rules for English; with the library of espeak-ng other languages are possible</source>
        <translation>die Wörter sind nach Regeln für Englisch buchstabiert; mit der Bibliothek von espeak-ng sind andere Sprachen möglich</translation>
    </message>
    <message>
        <source>line %1: expected a time in seconds or minutes:seconds, not before the one above, found %2</source>
        <translation>Zeile %1: erwartet wird eine Zeit in Sekunden oder Minuten:Sekunden, nicht vor der darüber, da steht %2</translation>
    </message>
    <message>
        <source>the text has no words</source>
        <translation>der Text hat keine Wörter</translation>
    </message>
    <message>
        <source>line %1, column %2: expected a frame&apos;s number from 0, found %3</source>
        <translation>Zeile %1, Spalte %2: erwartet wird eine Bildnummer ab 0, da steht %3</translation>
    </message>
    <message>
        <source>line %1, column %2: expected a number from 0 to 255, found %3</source>
        <translation>Zeile %1, Spalte %2: erwartet wird eine Zahl von 0 bis 255, da steht %3</translation>
    </message>
    <message>
        <source>the tracks are longer than the sheet; their end is left out</source>
        <translation>die Spuren sind länger als das Sheet; ihr Ende fehlt</translation>
    </message>
    <message>
        <source>the file has no list &quot;mouthCues&quot;</source>
        <translation>die Datei hat keine Liste „mouthCues“</translation>
    </message>
    <message>
        <source>%1: expected an object with the number &quot;start&quot; and the text &quot;value&quot;</source>
        <translation>%1: erwartet wird ein Objekt mit der Zahl „start“ und dem Text „value“</translation>
    </message>
    <message>
        <source>%1: the cue has no start in seconds</source>
        <translation>%1: die Marke hat keinen Anfang in Sekunden</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>the file has no cues</source>
        <translation>die Datei hat keine Marken</translation>
    </message>
    <message>
        <source>the sheet&apos;s rate, %1, gives no times (see --rate)</source>
        <translation>die Rate des Sheets, %1, ergibt keine Zeiten (siehe --rate)</translation>
    </message>
    <message>
        <source>the sheet has no mouth on its first frame; %1 is written there, since readers need one</source>
        <translation>das Sheet hat auf seinem ersten Bild keinen Mund; dort wird %1 geschrieben, weil lesende Programme einen brauchen</translation>
    </message>
    <message>
        <source>expected a JSON object</source>
        <translation>erwartet wird ein JSON-Objekt</translation>
    </message>
    <message>
        <source>of %1 voices only the first, %2, is taken</source>
        <translation>von %1 Stimmen wird nur die erste, %2, genommen</translation>
    </message>
    <message>
        <source>line %1: expected %2, but the file ends</source>
        <translation>Zeile %1: erwartet wird %2, aber die Datei endet</translation>
    </message>
    <message>
        <source>the frame rate, %1, is written as %2: the format has whole numbers</source>
        <translation>die Bildrate, %1, wird als %2 geschrieben: das Format hat ganze Zahlen</translation>
    </message>
    <message>
        <source>blanks within a comment are written as _, since a word of this format has none</source>
        <translation>Leerzeichen in einem Kommentar werden als _ geschrieben, da ein Wort dieses Formats keine hat</translation>
    </message>
    <message>
        <source>line 1: expected %1, found %2</source>
        <translation>Zeile 1: erwartet wird %1, da steht %2</translation>
    </message>
    <message>
        <source>line %1: expected a frame from 1 to %2, a blank and a name, found %3</source>
        <translation>Zeile %1: erwartet werden ein Bild von 1 bis %2, ein Leerzeichen und ein Name, da steht %3</translation>
    </message>
    <message>
        <source>switch data doesn&apos;t tell its length: the sheet ends with the last mouth (see --sound)</source>
        <translation>Schalterdaten sagen ihre Länge nicht: das Sheet endet mit dem letzten Mund (siehe --sound)</translation>
    </message>
    <message>
        <source>column %1, entry %2: expected a &quot;frame&quot; from 0 to %3</source>
        <translation>Spalte %1, Eintrag %2: erwartet wird ein „frame“ von 0 bis %3</translation>
    </message>
    <message>
        <source>the file has no time table</source>
        <translation>die Datei hat keine Zeittafel</translation>
    </message>
    <message>
        <source>of %1 time tables only the first, %2, is taken</source>
        <translation>von %1 Zeittafeln wird nur die erste, %2, genommen</translation>
    </message>
    <message>
        <source>a &quot;duration&quot; above %1 can&apos;t be used</source>
        <translation>eine „duration“ über %1 ist nicht brauchbar</translation>
    </message>
    <message>
        <source>of %1 columns of cells only %2 is taken</source>
        <translation>von %1 Spalten mit Zellen wird nur %2 genommen</translation>
    </message>
    <message>
        <source>the sheet would fill %1 pages; at most %2 are printed</source>
        <translation>das Sheet würde %1 Seiten füllen; höchstens %2 werden gedruckt</translation>
    </message>
    <message>
        <source>Yellow</source>
        <translation>Gelb</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>%1 frames</source>
        <translation>%1 Bilder</translation>
    </message>
    <message>
        <source>%1 s, %2 frames, %3 ft</source>
        <translation>%1 s, %2 Bilder, %3 ft</translation>
    </message>
    <message>
        <source>Sheet</source>
        <translation>Sheet</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>Ton</translation>
    </message>
    <message>
        <source>Rate</source>
        <translation>Rate</translation>
    </message>
    <message>
        <source>%1 fps</source>
        <translation>%1 B/s</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Frame</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Sec</source>
        <translation>Sek</translation>
    </message>
    <message>
        <source>Feet</source>
        <translation>Fuß</translation>
    </message>
    <message>
        <source>Mouth</source>
        <translation>Mund</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>line %1: expected names of the sheet, a bar, one name, a bar, one name</source>
        <translation>Zeile %1: erwartet werden Namen des Sheets, ein Strich, ein Name, ein Strich, ein Name</translation>
    </message>
    <message>
        <source>line %1: %2 is no mouth of the sheet</source>
        <translation>Zeile %1: %2 ist kein Mund des Sheets</translation>
    </message>
    <message>
        <source>line %1: %2 stands in the table a second time</source>
        <translation>Zeile %1: %2 steht ein zweites Mal in der Tabelle</translation>
    </message>
    <message>
        <source>the table of names is empty</source>
        <translation>die Tabelle der Namen ist leer</translation>
    </message>
    <message>
        <source>the sound is too long: %1 samples, where a wave file of this form holds %2</source>
        <translation>der Ton ist zu lang: %1 Abtastwerte, wo eine Wave-Datei dieser Form %2 fasst</translation>
    </message>
    <message>
        <source>%1 channels are mixed to one</source>
        <translation>%1 Kanäle werden zu einem gemischt</translation>
    </message>
    <message>
        <source>the sound is made quieter by %1 dB, so that its peaks are kept whole</source>
        <translation>der Ton wird um %1 dB leiser gemacht, damit seine Spitzen ganz bleiben</translation>
    </message>
    <message>
        <source>a mouth shorter than a frame is left out, at frame %2</source>
        <translation>ein Mund, der kürzer als ein Bild ist, fehlt, bei Bild %2</translation>
    </message>
    <message>
        <source>an entry behind the sheet&apos;s end, which is at frame %2, is left out</source>
        <translation>ein Eintrag hinter dem Ende des Sheets bei Bild %2 fehlt</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>Zeile %1</translation>
    </message>
    <message>
        <source>%2: the table of names has no mouth %1; it goes into the comment</source>
        <translation>%2: die Tabelle der Namen hat keinen Mund %1; er kommt in den Kommentar</translation>
    </message>
    <message>
        <source>a mouth that the table of names doesn&apos;t know is left out, at frame %2: %3</source>
        <translation>ein Mund, den die Tabelle der Namen nicht kennt, fehlt, bei Bild %2: %3</translation>
    </message>
    <message>
        <source>the table has no rows</source>
        <translation>die Tabelle hat keine Zeilen</translation>
    </message>
    <message>
        <source>cue %1</source>
        <translation>Marke %1</translation>
    </message>
    <message>
        <source>%2: a start of %1 seconds can&apos;t be used</source>
        <translation>%2: ein Anfang bei %1 Sekunden ist nicht brauchbar</translation>
    </message>
    <message>
        <source>line %1: expected seconds, a tab and a letter, found %2</source>
        <translation>Zeile %1: erwartet werden Sekunden, ein Tabulator und ein Buchstabe, da steht %2</translation>
    </message>
    <message>
        <source>a frame rate above 0</source>
        <translation>eine Bildrate über 0</translation>
    </message>
    <message>
        <source>the number of frames</source>
        <translation>die Zahl der Bilder</translation>
    </message>
    <message>
        <source>the number of voices</source>
        <translation>die Zahl der Stimmen</translation>
    </message>
    <message>
        <source>line %1: expected %3, found %2</source>
        <translation>Zeile %1: erwartet wird %3, da steht %2</translation>
    </message>
    <message>
        <source>the number of phrases</source>
        <translation>die Zahl der Sätze</translation>
    </message>
    <message>
        <source>the phrase&apos;s first frame</source>
        <translation>das erste Bild des Satzes</translation>
    </message>
    <message>
        <source>the phrase&apos;s last frame</source>
        <translation>das letzte Bild des Satzes</translation>
    </message>
    <message>
        <source>the number of words</source>
        <translation>die Zahl der Wörter</translation>
    </message>
    <message>
        <source>a word, its first and last frame and its number of mouths</source>
        <translation>ein Wort, sein erstes und letztes Bild und die Zahl seiner Münder</translation>
    </message>
    <message>
        <source>a frame and a mouth</source>
        <translation>ein Bild und ein Mund</translation>
    </message>
    <message>
        <source>column %1, frame %2</source>
        <translation>Spalte %1, Bild %2</translation>
    </message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>QAbstractFileIconProvider</name>
    <message>
        <source>Folder</source>
        <comment>All other platforms</comment>
        <translation>Ordner</translation>
    </message>
</context>
<context>
    <name>QComboBox</name>
    <message>
        <source>Open the combo box selection popup</source>
        <translation>Auswahlliste öffnen</translation>
    </message>
</context>
<context>
    <name>QDialogButtonBox</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Look in:</source>
        <translation>Ordner:</translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation>Ordner:</translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation>Datei&amp;name:</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Choose</source>
        <translation>&amp;Auswählen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation>Dateityp:</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vor</translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation>Übergeordneter Ordner</translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation>Neuen Ordner anlegen</translation>
    </message>
    <message>
        <source>List View</source>
        <translation>Liste</translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation>Details</translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation>&amp;Umbenennen</translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation>&amp;Versteckte Dateien zeigen</translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation>&amp;Neuer Ordner</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 gibt es schon.
Soll die Datei ersetzt werden?</translation>
    </message>
    <message>
        <source>%1
File not found.
Please verify the correct file name was given.</source>
        <translation>%1
Datei nicht gefunden.
Bitte den Dateinamen prüfen.</translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation>Geändert am</translation>
    </message>
    <message>
        <source>Computer</source>
        <translation>Computer</translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;OK</source>
        <translation>&amp;OK</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nein</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>QScrollBar</name>
    <message>
        <source>Scroll here</source>
        <translation>Hierher blättern</translation>
    </message>
    <message>
        <source>Left edge</source>
        <translation>Linker Rand</translation>
    </message>
    <message>
        <source>Right edge</source>
        <translation>Rechter Rand</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>Anfang</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>Ende</translation>
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
        <source>Page up</source>
        <translation>Eine Seite nach oben</translation>
    </message>
    <message>
        <source>Page down</source>
        <translation>Eine Seite nach unten</translation>
    </message>
    <message>
        <source>Scroll left</source>
        <translation>Nach links blättern</translation>
    </message>
    <message>
        <source>Scroll right</source>
        <translation>Nach rechts blättern</translation>
    </message>
    <message>
        <source>Scroll up</source>
        <translation>Nach oben blättern</translation>
    </message>
    <message>
        <source>Scroll down</source>
        <translation>Nach unten blättern</translation>
    </message>
</context>
<context>
    <name>QShortcut</name>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
</context>
<context>
    <name>QTabBar</name>
    <message>
        <source>Scroll Left</source>
        <translation>Nach links</translation>
    </message>
    <message>
        <source>Scroll Right</source>
        <translation>Nach rechts</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation>&amp;Link-Adresse kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
</context>
<context>
    <name>orvalis::CallTable</name>
    <message>
        <source>Calls</source>
        <translation>Aufrufe</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Select &amp;all</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
</context>
<context>
    <name>orvalis::EventView</name>
    <message>
        <source>No events yet.</source>
        <translation>Noch keine Ereignisse.</translation>
    </message>
    <message>
        <source>Events</source>
        <translation>Ereignisse</translation>
    </message>
</context>
<context>
    <name>orvalis::GuideView</name>
    <message>
        <source>Guide</source>
        <translation>Handbuch</translation>
    </message>
</context>
<context>
    <name>orvalis::HelpWindow</name>
    <message>
        <source>Orvalis Guide</source>
        <translation>Orvalis-Handbuch</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>&amp;Forward</source>
        <translation>&amp;Vor</translation>
    </message>
    <message>
        <source>&amp;Contents</source>
        <translation>&amp;Inhalt</translation>
    </message>
    <message>
        <source>&amp;Search:</source>
        <translation>&amp;Suchen:</translation>
    </message>
    <message>
        <source>Search this page</source>
        <translation>Auf dieser Seite suchen</translation>
    </message>
    <message>
        <source>Enter goes to the next place on this page</source>
        <translation>Die Eingabetaste springt zur nächsten Stelle auf dieser Seite</translation>
    </message>
    <message>
        <source>In the b&amp;rowser</source>
        <translation>Im &amp;Browser</translation>
    </message>
    <message>
        <source>not found</source>
        <translation>nicht gefunden</translation>
    </message>
</context>
<context>
    <name>orvalis::HistoryPlot</name>
    <message>
        <source>%1, %2 to %3</source>
        <extracomment>Above a graph: what it shows, from when to when.</extracomment>
        <translation>%1, %2 bis %3</translation>
    </message>
    <message>
        <source>%1: no values yet</source>
        <extracomment>Above a graph: what it shows.</extracomment>
        <translation>%1: noch keine Werte</translation>
    </message>
    <message>
        <source>%1 · DEMO — simulated values</source>
        <extracomment>Above a graph, after the title.</extracomment>
        <translation>%1 · DEMO — simulierte Werte</translation>
    </message>
    <message>
        <source>%1 · reading…</source>
        <extracomment>Above a graph, after the title: older values are being read from files.</extracomment>
        <translation>%1 · wird gelesen…</translation>
    </message>
    <message>
        <source>nothing is known</source>
        <translation>nichts bekannt</translation>
    </message>
    <message>
        <source>unknown</source>
        <extracomment>In place of a value.</extracomment>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>%1, held</source>
        <extracomment>%1 is a value with its unit, which was kept from before because there was no new one.</extracomment>
        <translation>%1, gehalten</translation>
    </message>
    <message>
        <source>Curves over time: %1. Ctrl with the left or right arrow key reads the values.</source>
        <extracomment>Of a graph, to a screen reader; followed by the names of the curves.</extracomment>
        <translation>Kurven über der Zeit: %1. Strg mit der linken oder rechten Pfeiltaste liest die Werte ab.</translation>
    </message>
</context>
<context>
    <name>orvalis::Message</name>
    <message>
        <source>watching the settings</source>
        <translation>Überwachen der Einstellungen</translation>
    </message>
    <message>
        <source>reconnecting</source>
        <translation>Wiederverbinden</translation>
    </message>
    <message>
        <source>judging whether it is safe</source>
        <translation>Beurteilen, ob es sicher ist</translation>
    </message>
    <message>
        <source>Demo mode: simulated values</source>
        <translation>Demomodus: simulierte Werte</translation>
    </message>
    <message>
        <source>giving the last verdict</source>
        <translation>Ausgeben des letzten Urteils</translation>
    </message>
    <message>
        <source>serving the network</source>
        <translation>Bereitstellen im Netzwerk</translation>
    </message>
    <message>
        <source>A program that was started for a client serves no others.</source>
        <translation>Für ein anderes Programm gestartet: die Werte bekommt nur dieses.</translation>
    </message>
    <message>
        <source>publishing over MQTT</source>
        <translation>Veröffentlichen über MQTT</translation>
    </message>
    <message>
        <source>a program that was started for a client publishes nothing</source>
        <translation>für ein anderes Programm gestartet: veröffentlicht nichts</translation>
    </message>
    <message>
        <source>polling the unit</source>
        <translation>Abfrage des Sensors</translation>
    </message>
    <message>
        <source>changing a setting</source>
        <translation>Ändern einer Einstellung</translation>
    </message>
    <message>
        <source>saving the night theme</source>
        <translation>Speichern der Nachtansicht</translation>
    </message>
    <message>
        <source>acknowledging the loss of the settings</source>
        <translation>Bestätigen des Verlusts der Einstellungen</translation>
    </message>
    <message>
        <source>forcing the verdict</source>
        <translation>Setzen des Urteils von Hand</translation>
    </message>
    <message>
        <source>testing the verdict</source>
        <translation>Testen des Urteils</translation>
    </message>
    <message>
        <source>saving the choice of messages</source>
        <translation>Speichern der Meldungsauswahl</translation>
    </message>
    <message>
        <source>saving the place</source>
        <translation>Speichern des Standorts</translation>
    </message>
    <message>
        <source>no file chosen</source>
        <translation>keine Datei gewählt</translation>
    </message>
    <message>
        <source>playing</source>
        <translation>wird abgespielt</translation>
    </message>
    <message>
        <source>ended with code 0</source>
        <translation>mit Code 0 beendet</translation>
    </message>
    <message>
        <source>started</source>
        <translation>gestartet</translation>
    </message>
    <message>
        <source>announcing the verdict</source>
        <translation>Bekanntgeben des Urteils</translation>
    </message>
    <message>
        <source>Receiving complete frames again</source>
        <translation>Vollständige Messungen kommen wieder an</translation>
    </message>
    <message>
        <source>since %1</source>
        <translation>seit %1</translation>
    </message>
    <message>
        <source>since the start</source>
        <translation>seit dem Start</translation>
    </message>
    <message>
        <source>No valid reading from the unit %1</source>
        <translation>Keine gültige Messung vom Sensor %1</translation>
    </message>
    <message>
        <source>No complete frame from the unit %1</source>
        <translation>Keine vollständige Messung vom Sensor %1</translation>
    </message>
    <message>
        <source>&quot;Windy&quot; is below &quot;Breeze&quot;</source>
        <translation>„Windy“ liegt unter „Breeze“</translation>
    </message>
    <message>
        <source>&quot;Clear&quot; is below &quot;Cloudy&quot;</source>
        <translation>„Clear“ liegt unter „Cloudy“</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>leer</translation>
    </message>
    <message>
        <source>too large</source>
        <translation>zu groß</translation>
    </message>
    <message>
        <source>not a whole number</source>
        <translation>keine ganze Zahl</translation>
    </message>
    <message>
        <source>not a number</source>
        <translation>keine Zahl</translation>
    </message>
    <message>
        <source>%1: OK returns here</source>
        <translation>%1: OK führt hierher zurück</translation>
    </message>
    <message>
        <source>stores %1: %2</source>
        <translation>speichert %1: %2</translation>
    </message>
    <message>
        <source>-9999 cannot be stored: OK returns here</source>
        <translation>-9999 lässt sich nicht speichern: OK führt hierher zurück</translation>
    </message>
    <message>
        <source>stores %1: a whole number is needed</source>
        <translation>speichert %1: es muss eine ganze Zahl sein</translation>
    </message>
    <message>
        <source>stores %1</source>
        <translation>speichert %1</translation>
    </message>
    <message>
        <source>must be 0 or more</source>
        <translation>muss mindestens 0 sein</translation>
    </message>
    <message>
        <source>must be above 0</source>
        <translation>muss größer als 0 sein</translation>
    </message>
    <message>
        <source>must be 1 through 300</source>
        <translation>muss zwischen 1 und 300 liegen</translation>
    </message>
    <message>
        <source>must be 0 through 3600</source>
        <translation>muss zwischen 0 und 3600 liegen</translation>
    </message>
    <message>
        <source>must be 1 through 65535</source>
        <translation>muss zwischen 1 und 65535 liegen</translation>
    </message>
    <message>
        <source>%1 counts</source>
        <translation>%1&#xa0;Counts</translation>
    </message>
    <message>
        <source>no alarm</source>
        <translation>kein Alarm</translation>
    </message>
    <message>
        <source>UNSAFE if this alarm is on</source>
        <translation>UNSICHER, wenn dieser Alarm eingeschaltet ist</translation>
    </message>
    <message>
        <source>past the limit, but the alarm is off</source>
        <translation>Schwelle überschritten, aber der Alarm ist ausgeschaltet</translation>
    </message>
    <message>
        <source>alarm, UNSAFE</source>
        <translation>Alarm, UNSICHER</translation>
    </message>
    <message>
        <source>Limits: %1, %2</source>
        <translation>Schwellen: %1, %2</translation>
    </message>
    <message>
        <source>Limit: %1</source>
        <translation>Schwelle: %1</translation>
    </message>
    <message>
        <source>no alarm, but rain has only just ended: %1 s left</source>
        <translation>kein Alarm, aber der Regen ist gerade erst vorbei: noch %1&#xa0;s</translation>
    </message>
    <message>
        <source>no new alarm; one that is on ends at %1</source>
        <translation>kein neuer Alarm; ein laufender endet bei %1</translation>
    </message>
    <message>
        <source>No reading now</source>
        <translation>Zurzeit keine Messung</translation>
    </message>
    <message>
        <source>Not known now</source>
        <translation>Zurzeit nicht bekannt</translation>
    </message>
    <message>
        <source>Demo: %1: %2</source>
        <translation>Demo: %1: %2</translation>
    </message>
    <message>
        <source>Now %1: %2</source>
        <translation>Jetzt %1: %2</translation>
    </message>
    <message>
        <source>running the setup</source>
        <translation>Öffnen der Einstellungen</translation>
    </message>
    <message>
        <source>%1 (error %2)</source>
        <translation>%1 (Fehler %2)</translation>
    </message>
    <message>
        <source>unknown error</source>
        <translation>unbekannter Fehler</translation>
    </message>
    <message>
        <source>Error while %1: %2</source>
        <translation>Fehler (%1): %2</translation>
    </message>
    <message>
        <source>MQTT publishes nothing: no broker is named</source>
        <translation>MQTT veröffentlicht nichts: kein Broker angegeben</translation>
    </message>
    <message>
        <source>MQTT is off</source>
        <translation>MQTT ist ausgeschaltet</translation>
    </message>
    <message>
        <source>publishing to %1, topics %2/…</source>
        <translation>veröffentlicht über %1, Topics %2/…</translation>
    </message>
    <message>
        <source>nothing is published: %1</source>
        <translation>es wird nichts veröffentlicht: %1</translation>
    </message>
    <message>
        <source>connecting to %1</source>
        <translation>Verbindung zu %1 wird aufgebaut</translation>
    </message>
    <message>
        <source>No broker is named</source>
        <translation>Kein Broker angegeben</translation>
    </message>
    <message>
        <source>The broker accepts the connection, encrypted</source>
        <translation>Der Broker nimmt die Verbindung an, verschlüsselt</translation>
    </message>
    <message>
        <source>The broker accepts the connection</source>
        <translation>Der Broker nimmt die Verbindung an</translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation>Fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>another program has the port. A second Orvalis needs a profile with a port of its own</source>
        <translation>ein anderes Programm belegt den Port. Ein zweites Orvalis braucht ein Profil mit eigenem Port</translation>
    </message>
    <message>
        <source>Cannot serve the network on %1: %2. It is tried again every minute</source>
        <translation>Netzwerk auf %1 nicht möglich: %2. Neuer Versuch jede Minute</translation>
    </message>
    <message>
        <source>Clients cannot find the program by themselves: %1</source>
        <translation>Andere Programme finden Orvalis nicht von selbst: %1</translation>
    </message>
    <message>
        <source>dusk %1</source>
        <translation>Nacht ab %1</translation>
    </message>
    <message>
        <source>dawn %1</source>
        <translation>Nacht bis %1</translation>
    </message>
    <message>
        <source>Sun on the horizon</source>
        <translation>Sonne am Horizont</translation>
    </message>
    <message>
        <source>Sun %1° above the horizon</source>
        <translation>Sonne %1° über dem Horizont</translation>
    </message>
    <message>
        <source>Sun %1° below the horizon</source>
        <translation>Sonne %1° unter dem Horizont</translation>
    </message>
    <message>
        <source>it does not set</source>
        <translation>sie geht nicht unter</translation>
    </message>
    <message>
        <source>it does not rise</source>
        <translation>sie geht nicht auf</translation>
    </message>
    <message>
        <source>dark all day</source>
        <translation>ganztags dunkel</translation>
    </message>
    <message>
        <source>no full darkness</source>
        <translation>keine volle Dunkelheit</translation>
    </message>
    <message>
        <source>sunset %1</source>
        <translation>Sonnenuntergang %1</translation>
    </message>
    <message>
        <source>sunrise %1</source>
        <translation>Sonnenaufgang %1</translation>
    </message>
    <message>
        <source>Next %1.</source>
        <translation>Als Nächstes: %1.</translation>
    </message>
    <message>
        <source>Between dusk and dawn the sun is 18° or more below the horizon, and the sky as dark as it gets.</source>
        <translation>In der astronomischen Nacht steht die Sonne 18° oder mehr unter dem Horizont: dunkler wird der Himmel nicht.</translation>
    </message>
    <message>
        <source>UNSAFE</source>
        <translation>UNSICHER</translation>
    </message>
    <message>
        <source>SAFE</source>
        <translation>SICHER</translation>
    </message>
    <message>
        <source>SAFE (demo)</source>
        <translation>SICHER (Demo)</translation>
    </message>
    <message>
        <source>the values are simulated</source>
        <translation>die Werte sind simuliert</translation>
    </message>
    <message>
        <source>SAFE - demo mode: the values are simulated</source>
        <translation>SICHER – Demomodus: die Werte sind simuliert</translation>
    </message>
    <message>
        <source>SAFE soon</source>
        <translation>bald SICHER</translation>
    </message>
    <message>
        <source>reading at %1</source>
        <translation>Messung um %1</translation>
    </message>
    <message>
        <source>last reading at %1</source>
        <translation>letzte Messung um %1</translation>
    </message>
    <message>
        <source>1 more reason</source>
        <translation>1 weiterer Grund</translation>
    </message>
    <message>
        <source>%1 more reasons</source>
        <translation>%1 weitere Gründe</translation>
    </message>
    <message>
        <source>release it under &quot;Verdict&quot;</source>
        <translation>aufheben unter „Urteil“</translation>
    </message>
    <message>
        <source>also forced by hand, release it under &quot;Verdict&quot;</source>
        <translation>auch von Hand auf unsicher gesetzt, aufheben unter „Urteil“</translation>
    </message>
    <message>
        <source>also %1</source>
        <translation>auch %1</translation>
    </message>
    <message>
        <source>safe since %1</source>
        <translation>sicher seit %1</translation>
    </message>
    <message>
        <source>unsafe since %1</source>
        <translation>unsicher seit %1</translation>
    </message>
    <message>
        <source>there is a control character in %1</source>
        <translation>Steuerzeichen in: %1</translation>
    </message>
    <message>
        <source>the URL is longer than %1 characters</source>
        <translation>die URL ist länger als %1 Zeichen</translation>
    </message>
    <message>
        <source>a URL with a port needs a path after it, or at least &quot;/&quot;</source>
        <translation>nach einem Port in der URL muss ein Pfad folgen, mindestens „/“</translation>
    </message>
    <message>
        <source>the host name in the URL is too long</source>
        <translation>der Hostname in der URL ist zu lang</translation>
    </message>
    <message>
        <source>the host name in the URL contains an invalid character</source>
        <translation>der Hostname in der URL enthält ein ungültiges Zeichen</translation>
    </message>
    <message>
        <source>the port in the URL is not a valid port number</source>
        <translation>der Port in der URL ist keine gültige Portnummer</translation>
    </message>
    <message>
        <source>the station ID or the password is still the placeholder; enter your own</source>
        <translation>Stations-ID oder Passwort ist noch der Platzhalter; bitte die eigenen eintragen</translation>
    </message>
    <message>
        <source>Request sent %1</source>
        <translation>Anfrage gesendet um %1</translation>
    </message>
    <message>
        <source>demo values are not uploaded; &quot;Test Server&quot; sends them anyway</source>
        <translation>Demo-Werte werden nicht hochgeladen; „Test Server“ sendet sie trotzdem</translation>
    </message>
    <message>
        <source>no current reading</source>
        <translation>keine aktuelle Messung</translation>
    </message>
    <message>
        <source>the ambient temperature is not known</source>
        <translation>die Umgebungstemperatur ist unbekannt</translation>
    </message>
    <message>
        <source>a value is not a number</source>
        <translation>ein Wert ist keine Zahl</translation>
    </message>
    <message>
        <source>Nothing would be sent now: %1</source>
        <translation>Jetzt würde nichts gesendet: %1</translation>
    </message>
    <message>
        <source>Request as it would be sent now</source>
        <translation>Anfrage, wie sie jetzt gesendet würde</translation>
    </message>
    <message>
        <source>Request as it would be sent now if uploads were enabled</source>
        <translation>Anfrage, wie sie jetzt gesendet würde, wenn Uploads erlaubt wären</translation>
    </message>
    <message>
        <source>once you have entered the ID and the password</source>
        <translation>sobald ID und Passwort eingetragen sind</translation>
    </message>
    <message>
        <source>by &quot;Test Server&quot; only: demo values</source>
        <translation>nur mit „Test Server“: Demo-Werte</translation>
    </message>
    <message>
        <source>Enter your own: this placeholder is never sent</source>
        <translation>Bitte eigene Angabe eintragen: dieser Platzhalter wird nie gesendet</translation>
    </message>
    <message>
        <source>Sent as is: the service may misread a blank, &quot;&amp;&quot;, &quot;%&quot;, &quot;+&quot; or &quot;#&quot; in it</source>
        <translation>Wird unverändert gesendet: Leerzeichen, „&amp;“, „%“, „+“ oder „#“ darin kann der Dienst falsch lesen</translation>
    </message>
    <message>
        <source>Cannot be sent: %1.</source>
        <translation>Kann nicht gesendet werden: %1.</translation>
    </message>
    <message>
        <source>Sent as %1 to %2, port %3.</source>
        <translation>Wird als %1 an %2 gesendet, Port %3.</translation>
    </message>
    <message>
        <source>publishing the readings</source>
        <translation>Veröffentlichen der Messwerte</translation>
    </message>
    <message>
        <source>storing the readings interval</source>
        <translation>Speichern des Intervalls der Messwerte</translation>
    </message>
    <message>
        <source>publishing the picture</source>
        <translation>Veröffentlichen des Bildes</translation>
    </message>
    <message>
        <source>storing the picture interval</source>
        <translation>Speichern des Intervalls der Bilder</translation>
    </message>
    <message>
        <source>storing the web publishing settings</source>
        <translation>Speichern der Web-Einstellungen</translation>
    </message>
    <message>
        <source>testing the server</source>
        <translation>Testen des Servers</translation>
    </message>
    <message>
        <source>capturing the panel</source>
        <translation>Aufnehmen des Hauptfensters</translation>
    </message>
    <message>
        <source>the station ID or the password is still the placeholder</source>
        <translation>Stations-ID oder Passwort ist noch der Platzhalter</translation>
    </message>
    <message>
        <source>tick &quot;Use built-in FTP&quot;</source>
        <translation>„Eingebautes FTP verwenden“ ankreuzen</translation>
    </message>
    <message>
        <source>Sent by the script winscp_xfer.txt, with the account and the server in it.</source>
        <translation>Wird vom Skript winscp_xfer.txt gesendet, mit dem Konto und dem Server darin.</translation>
    </message>
    <message>
        <source>there is a control character in the webcam&apos;s name, the password or the webcam server</source>
        <translation>Steuerzeichen in Webcam-Name, Passwort oder Webcam-Server</translation>
    </message>
    <message>
        <source>the webcam name or the password is still the placeholder; enter your own</source>
        <translation>Webcam-Name oder Passwort ist noch der Platzhalter; bitte die eigenen eintragen</translation>
    </message>
    <message>
        <source>the webcam server is not an FTP address</source>
        <translation>der Webcam-Server ist keine FTP-Adresse</translation>
    </message>
    <message>
        <source>the webcam server is missing</source>
        <translation>der Webcam-Server fehlt</translation>
    </message>
    <message>
        <source>the webcam server contains an invalid character; enter the name and the password in their own fields</source>
        <translation>der Webcam-Server enthält ein ungültiges Zeichen; Name und Passwort gehören in ihre eigenen Felder</translation>
    </message>
    <message>
        <source>the port of the webcam server is not a valid port number</source>
        <translation>der Port des Webcam-Servers ist keine gültige Portnummer</translation>
    </message>
    <message>
        <source>The setting &quot;TempsAvgCount&quot; is %1 but must be 1 to %2; until it is corrected the ambient temperature is unknown</source>
        <translation>Die Einstellung „TempsAvgCount“ ist %1, muss aber zwischen 1 und %2 liegen; bis dahin ist die Umgebungstemperatur unbekannt</translation>
    </message>
    <message>
        <source>Cannot save %1: %2</source>
        <translation>%1 lässt sich nicht speichern: %2</translation>
    </message>
    <message>
        <source>connecting</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Connected to %1</source>
        <translation>Verbunden mit %1</translation>
    </message>
    <message>
        <source>Cannot connect: %1</source>
        <translation>Keine Verbindung: %1</translation>
    </message>
    <message>
        <source>no answer from the unit on %1 within 4 seconds; check its power, the cable, and whatever may delay the line</source>
        <translation>der Sensor an %1 antwortet nicht innerhalb von 4 Sekunden; Strom, Kabel und alles prüfen, was die Leitung bremsen kann</translation>
    </message>
    <message>
        <source>what answers on %1 is not the unit; check the port in the setup</source>
        <translation>an %1 antwortet etwas anderes als der Sensor; Anschluss in den Einstellungen prüfen</translation>
    </message>
    <message>
        <source>old answers keep coming on %1</source>
        <translation>an %1 kommen immer noch alte Antworten</translation>
    </message>
    <message>
        <source>the line to %1 delays the unit&apos;s answers</source>
        <translation>die Leitung zu %1 verzögert die Antworten des Sensors</translation>
    </message>
    <message>
        <source>the unit on %1 greeted, but its first frame was not complete</source>
        <translation>der Sensor an %1 hat sich gemeldet, aber seine erste Messung war unvollständig</translation>
    </message>
    <message>
        <source>Disconnected</source>
        <translation>Getrennt</translation>
    </message>
    <message>
        <source>The line delays the unit&apos;s answers by %1 seconds: none is used</source>
        <translation>Die Leitung verzögert die Antworten des Sensors um %1 Sekunden: keine wird verwendet</translation>
    </message>
    <message>
        <source>An answer from the unit came %1 seconds after its request and was discarded</source>
        <translation>Eine Antwort des Sensors kam erst nach %1 Sekunden und wurde verworfen</translation>
    </message>
    <message>
        <source>Connection lost: %1</source>
        <translation>Verbindung verloren: %1</translation>
    </message>
    <message>
        <source>three digits, of tenths</source>
        <translation>drei Ziffern, in Zehnteln</translation>
    </message>
    <message>
        <source>three digits</source>
        <translation>drei Ziffern</translation>
    </message>
    <message>
        <source>a sign and three digits</source>
        <translation>Vorzeichen und drei Ziffern</translation>
    </message>
    <message>
        <source>two digits</source>
        <translation>zwei Ziffern</translation>
    </message>
    <message>
        <source>one digit</source>
        <translation>eine Ziffer</translation>
    </message>
    <message>
        <source>the unit gets %1 (it takes %2)</source>
        <translation>der Sensor bekommt %1 (er nimmt %2)</translation>
    </message>
    <message>
        <source>rain %1 counts, limit %2</source>
        <translation>Regen %1&#xa0;Counts, Schwelle %2</translation>
    </message>
    <message>
        <source>rain, limit %1 passed at %2</source>
        <translation>Regen, Schwelle %1 überschritten um %2</translation>
    </message>
    <message>
        <source>%1; the unit stays on for %2 s after rain</source>
        <translation>%1; der Sensor bleibt nach Regen %2&#xa0;s im Alarm</translation>
    </message>
    <message>
        <source>%1; the unit stays on for %2 s after rain, %3 left</source>
        <translation>%1; der Sensor bleibt nach Regen %2&#xa0;s im Alarm, noch %3</translation>
    </message>
    <message>
        <source>rain just over, the unit stays on for %1</source>
        <translation>Regen gerade vorbei, Alarm noch %1</translation>
    </message>
    <message>
        <source>wind %1 counts, limit %2</source>
        <translation>Wind %1&#xa0;Counts, Schwelle %2</translation>
    </message>
    <message>
        <source>wind, limit %1 passed at %2</source>
        <translation>Wind, Schwelle %1 überschritten um %2</translation>
    </message>
    <message>
        <source>light %1 counts, limit %2 (fewer is brighter)</source>
        <translation>Licht %1&#xa0;Counts, Schwelle %2 (weniger ist heller)</translation>
    </message>
    <message>
        <source>light since %1</source>
        <translation>Licht seit %1</translation>
    </message>
    <message>
        <source>clouds: sky %1, limit %2</source>
        <translation>Bewölkung: Himmel %1, Schwelle %2</translation>
    </message>
    <message>
        <source>%1; the alarm ends at %2</source>
        <translation>%1; der Alarm endet bei %2</translation>
    </message>
    <message>
        <source>clouds since %1</source>
        <translation>Bewölkung seit %1</translation>
    </message>
    <message>
        <source>the unit&apos;s relay is on; none of the readings explains it</source>
        <translation>das Relais des Sensors ist an; kein Messwert erklärt das</translation>
    </message>
    <message>
        <source>unit&apos;s alarm: %1</source>
        <translation>Alarm des Sensors: %1</translation>
    </message>
    <message>
        <source>unit&apos;s relay on since %1</source>
        <translation>Relais des Sensors an seit %1</translation>
    </message>
    <message>
        <source>no reading for %1</source>
        <translation>keine Messung seit %1</translation>
    </message>
    <message>
        <source>no reading for long</source>
        <translation>seit langem keine Messung</translation>
    </message>
    <message>
        <source>a test, %1 left</source>
        <translation>Test, noch %1</translation>
    </message>
    <message>
        <source>not connected to the unit</source>
        <translation>keine Verbindung zum Sensor</translation>
    </message>
    <message>
        <source>not connected to the unit since %1</source>
        <translation>keine Verbindung zum Sensor seit %1</translation>
    </message>
    <message>
        <source>no reading from the unit yet</source>
        <translation>noch keine Messung vom Sensor</translation>
    </message>
    <message>
        <source>the unit&apos;s readings arrive damaged</source>
        <translation>die Messungen des Sensors kommen beschädigt an</translation>
    </message>
    <message>
        <source>damaged readings since %1</source>
        <translation>beschädigte Messungen seit %1</translation>
    </message>
    <message>
        <source>demo mode: the values are simulated</source>
        <translation>Demomodus: die Werte sind simuliert</translation>
    </message>
    <message>
        <source>demo mode</source>
        <translation>Demomodus</translation>
    </message>
    <message>
        <source>not all settings have been sent to the unit yet</source>
        <translation>noch nicht alle Einstellungen an den Sensor gesendet</translation>
    </message>
    <message>
        <source>the settings were restored or reset, and nobody has acknowledged that</source>
        <translation>die Einstellungen wurden wiederhergestellt oder zurückgesetzt, und niemand hat das bestätigt</translation>
    </message>
    <message>
        <source>settings restored or reset, not acknowledged</source>
        <translation>Einstellungen wiederhergestellt oder zurückgesetzt, nicht bestätigt</translation>
    </message>
    <message>
        <source>the ambient temperature is unknown, and so are the clouds</source>
        <translation>die Umgebungstemperatur ist unbekannt und damit auch die Bewölkung</translation>
    </message>
    <message>
        <source>ambient temperature unknown since %1</source>
        <translation>Umgebungstemperatur unbekannt seit %1</translation>
    </message>
    <message>
        <source>Orvalis is ending</source>
        <translation>Orvalis wird beendet</translation>
    </message>
    <message>
        <source>wind since %1</source>
        <translation>Wind seit %1</translation>
    </message>
    <message>
        <source>daylight since %1</source>
        <translation>Tageslicht seit %1</translation>
    </message>
    <message>
        <source>damp, %1 counts, limit %2</source>
        <translation>feucht, %1&#xa0;Counts, Schwelle %2</translation>
    </message>
    <message>
        <source>wind %1, limit %2</source>
        <translation>Wind %1, Schwelle %2</translation>
    </message>
    <message>
        <source>cloudy: the sky is %1 colder than the air, limit %2</source>
        <translation>bewölkt: der Himmel ist %1 kälter als die Luft, Schwelle %2</translation>
    </message>
    <message>
        <source>daylight: light %1 counts</source>
        <translation>Tageslicht: Licht %1&#xa0;Counts</translation>
    </message>
    <message>
        <source>the unit&apos;s relay is forced, so it says nothing about the sky</source>
        <translation>das Relais des Sensors ist auf „immer an“ gestellt und sagt deshalb nichts über den Himmel</translation>
    </message>
    <message>
        <source>the unit&apos;s relay is switched off, so it says nothing about the sky</source>
        <translation>das Relais des Sensors ist ausgeschaltet und sagt deshalb nichts über den Himmel</translation>
    </message>
    <message>
        <source>relay forced since %1</source>
        <translation>Relais auf „immer an“ seit %1</translation>
    </message>
    <message>
        <source>relay switched off since %1</source>
        <translation>Relais ausgeschaltet seit %1</translation>
    </message>
    <message>
        <source>forced by hand</source>
        <translation>von Hand auf unsicher gesetzt</translation>
    </message>
    <message>
        <source>forced by hand since %1</source>
        <translation>von Hand gesetzt seit %1</translation>
    </message>
    <message>
        <source>safe after another good reading</source>
        <translation>sicher nach einer weiteren guten Messung</translation>
    </message>
    <message>
        <source>safe in %1 if nothing else comes up</source>
        <translation>sicher in %1, wenn nichts dazwischenkommt</translation>
    </message>
    <message>
        <source>after another good reading</source>
        <translation>nach einer weiteren guten Messung</translation>
    </message>
    <message>
        <source>in %1</source>
        <translation>in %1</translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation>%1 Tagen</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1&#xa0;h</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1&#xa0;min</translation>
    </message>
    <message>
        <source>SAFE %1</source>
        <translation>SICHER %1</translation>
    </message>
    <message>
        <source>UNSAFE - %1</source>
        <translation>UNSICHER – %1</translation>
    </message>
    <message>
        <source>no connection</source>
        <translation>keine Verbindung</translation>
    </message>
    <message>
        <source>no reading</source>
        <translation>keine Messung</translation>
    </message>
    <message>
        <source>stale</source>
        <translation>veraltet</translation>
    </message>
    <message>
        <source>damaged reading</source>
        <translation>beschädigte Messung</translation>
    </message>
    <message>
        <source>demo</source>
        <translation>Demo</translation>
    </message>
    <message>
        <source>unit alarm</source>
        <translation>Sensoralarm</translation>
    </message>
    <message>
        <source>rain</source>
        <translation>Regen</translation>
    </message>
    <message>
        <source>wind</source>
        <translation>Wind</translation>
    </message>
    <message>
        <source>clouds</source>
        <translation>Bewölkung</translation>
    </message>
    <message>
        <source>light</source>
        <translation>Licht</translation>
    </message>
    <message>
        <source>relay off</source>
        <translation>Relais aus</translation>
    </message>
    <message>
        <source>settings pending</source>
        <translation>Einstellungen ausstehend</translation>
    </message>
    <message>
        <source>settings lost</source>
        <translation>Einstellungen verloren</translation>
    </message>
    <message>
        <source>unknown temperature</source>
        <translation>Temperatur unbekannt</translation>
    </message>
    <message>
        <source>forced</source>
        <translation>von Hand</translation>
    </message>
    <message>
        <source>stopping</source>
        <translation>Programmende</translation>
    </message>
    <message>
        <source>hold</source>
        <translation>Wartezeit</translation>
    </message>
    <message>
        <source>the name &quot;%2&quot; was not found</source>
        <translation>der Name „%2“ wurde nicht gefunden</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2</source>
        <translation>%1 ist nicht erreichbar: %2</translation>
    </message>
    <message>
        <source>no answer from %1</source>
        <translation>keine Antwort von %1</translation>
    </message>
    <message>
        <source>%1 ended the connection</source>
        <translation>%1 hat die Verbindung beendet</translation>
    </message>
    <message>
        <source>%1 does not accept the user name and password</source>
        <translation>%1 nimmt Benutzernamen und Passwort nicht an</translation>
    </message>
    <message>
        <source>%1 wants a user name and a password</source>
        <translation>%1 verlangt Benutzernamen und Passwort</translation>
    </message>
    <message>
        <source>%1 does not permit it</source>
        <translation>%1 erlaubt es nicht</translation>
    </message>
    <message>
        <source>%1 refuses: %2</source>
        <translation>%1 lehnt ab: %2</translation>
    </message>
    <message>
        <source>the certificate of %1 is not from an authority that is trusted here, or is not valid now</source>
        <translation>das Zertifikat von %1 stammt von keiner Stelle, der hier vertraut wird, oder gilt jetzt nicht</translation>
    </message>
    <message>
        <source>the certificate of %1 is for another name</source>
        <translation>das Zertifikat von %1 gilt für einen anderen Namen</translation>
    </message>
    <message>
        <source>the CA file &quot;%2&quot; cannot be used</source>
        <translation>die CA-Datei „%2“ ist nicht verwendbar</translation>
    </message>
    <message>
        <source>no encrypted line to %1: %2</source>
        <translation>keine verschlüsselte Verbindung zu %1: %2</translation>
    </message>
    <message>
        <source>this version of the program cannot use TLS; nothing is sent unencrypted in its place</source>
        <translation>diese Programmversion kann kein TLS; unverschlüsselt wird stattdessen nichts gesendet</translation>
    </message>
    <message>
        <source>the password would go to another machine over an unencrypted line: use TLS, or allow it in the settings</source>
        <translation>das Passwort ginge unverschlüsselt an einen anderen Rechner: TLS verwenden oder es in den Einstellungen erlauben</translation>
    </message>
    <message>
        <source>another program (%2) publishes under the same name on %1: give one of the two another station name</source>
        <translation>ein anderes Programm (%2) veröffentlicht unter demselben Namen auf %1: einem der beiden einen anderen Stationsnamen geben</translation>
    </message>
    <message>
        <source>the port was closed</source>
        <translation>der Anschluss wurde geschlossen</translation>
    </message>
    <message>
        <source>the method</source>
        <translation>Methode</translation>
    </message>
    <message>
        <source>the host</source>
        <translation>Host</translation>
    </message>
    <message>
        <source>the URL, the station&apos;s ID or the password</source>
        <translation>URL, Stations-ID oder Passwort</translation>
    </message>
    <message>
        <source>the URL</source>
        <translation>URL</translation>
    </message>
    <message>
        <source>the station&apos;s ID, the password or a variable</source>
        <translation>Stations-ID, Passwort oder eine Variable</translation>
    </message>
    <message>
        <source>a header name is empty or contains an invalid character</source>
        <translation>ein Header-Name ist leer oder enthält ein ungültiges Zeichen</translation>
    </message>
    <message>
        <source>the value of a header</source>
        <translation>Wert eines Headers</translation>
    </message>
    <message>
        <source>the port in the URL is above %1</source>
        <translation>der Port in der URL ist größer als %1</translation>
    </message>
    <message>
        <source>no serial port selected</source>
        <translation>kein serieller Anschluss gewählt</translation>
    </message>
    <message>
        <source>there is no serial port number %1</source>
        <translation>es gibt keinen seriellen Anschluss mit der Nummer %1</translation>
    </message>
    <message>
        <source>the port %1 does not exist; is the adapter plugged in, and is it the right port?</source>
        <translation>den Anschluss %1 gibt es nicht; steckt der Adapter, und ist es der richtige Anschluss?</translation>
    </message>
    <message>
        <source>%1 is not a serial port</source>
        <translation>%1 ist kein serieller Anschluss</translation>
    </message>
    <message>
        <source>the port %1 is in use by another program</source>
        <translation>der Anschluss %1 wird von einem anderen Programm benutzt</translation>
    </message>
    <message>
        <source>the port %1 cannot be opened: %2</source>
        <translation>der Anschluss %1 lässt sich nicht öffnen: %2</translation>
    </message>
    <message>
        <source>no permission for the port %1; %2</source>
        <translation>keine Berechtigung für den Anschluss %1; %2</translation>
    </message>
    <message>
        <source>join the group &quot;%1&quot; (sudo usermod -aG %1 $USER) and log in again</source>
        <translation>der Gruppe „%1“ beitreten (sudo usermod -aG %1 $USER) und neu anmelden</translation>
    </message>
    <message>
        <source>it belongs to another user&apos;s program; run that program as this user</source>
        <translation>er gehört zum Programm eines anderen Benutzers; dieses Programm als dieser Benutzer starten</translation>
    </message>
    <message>
        <source>give it to the group &quot;%1&quot; by a file /etc/udev/rules.d/99-serial.rules with the line SUBSYSTEM==&quot;tty&quot;, KERNEL==&quot;%2&quot;, GROUP=&quot;%1&quot;, MODE=&quot;0660&quot;, plug the adapter in again, and %3</source>
        <translation>ihn der Gruppe „%1“ geben, mit einer Datei /etc/udev/rules.d/99-serial.rules mit der Zeile SUBSYSTEM==&quot;tty&quot;, KERNEL==&quot;%2&quot;, GROUP=&quot;%1&quot;, MODE=&quot;0660&quot;, den Adapter neu einstecken und %3</translation>
    </message>
    <message>
        <source>cloudy above</source>
        <translation>bewölkt über</translation>
    </message>
    <message>
        <source>clear below</source>
        <translation>klar unter</translation>
    </message>
    <message>
        <source>windy above</source>
        <translation>windig über</translation>
    </message>
    <message>
        <source>breeze above</source>
        <translation>leichter Wind über</translation>
    </message>
    <message>
        <source>rain above</source>
        <translation>Regen über</translation>
    </message>
    <message>
        <source>damp above</source>
        <translation>feucht über</translation>
    </message>
    <message>
        <source>dark above</source>
        <translation>dunkel über</translation>
    </message>
    <message>
        <source>dusk above</source>
        <translation>Dämmerung über</translation>
    </message>
    <message>
        <source>skipping the assistant</source>
        <translation>Überspringen des Assistenten</translation>
    </message>
    <message>
        <source>updating the assistant</source>
        <translation>Aktualisieren des Assistenten</translation>
    </message>
    <message>
        <source>An earlier run ended by a fault; please report it with the backtrace in the error log: %1</source>
        <translation>Ein früherer Lauf endete durch einen Fehler; bitte mit der Rückverfolgung im Fehlerprotokoll melden: %1</translation>
    </message>
    <message>
        <source>ended with code %1</source>
        <translation>mit Code %1 beendet</translation>
    </message>
    <message>
        <source>was ended by signal %1</source>
        <translation>durch Signal %1 beendet</translation>
    </message>
    <message>
        <source>cannot be started: %1</source>
        <translation>lässt sich nicht starten: %1</translation>
    </message>
    <message>
        <source>crashed (%1)</source>
        <translation>abgestürzt (%1)</translation>
    </message>
    <message>
        <source>lost its runner: how it ended is not known</source>
        <translation>Startdienst verloren: wie es endete, ist nicht bekannt</translation>
    </message>
    <message>
        <source>how it ended is not known</source>
        <translation>wie es endete, ist nicht bekannt</translation>
    </message>
    <message>
        <source>%1 (the locale is %2, numbers are written like %3)</source>
        <translation>%1 (die Ländereinstellung ist %2, Zahlen schreibt man wie %3)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not &quot;True&quot;, &quot;False&quot; or a number</source>
        <translation>„%1“ ist weder „True“ noch „False“ noch eine Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number</source>
        <translation>„%1“ ist keine Zahl</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is too large</source>
        <translation>„%1“ ist zu groß</translation>
    </message>
    <message>
        <source>%1: the setting &quot;%2&quot; cannot be used: %3; set it right with: %4</source>
        <translation>%1: die Einstellung „%2“ ist nicht verwendbar: %3; berichtigen mit: %4</translation>
    </message>
    <message>
        <source>no program found for the command &quot;%1&quot;</source>
        <translation>kein Programm für den Befehl „%1“ gefunden</translation>
    </message>
    <message>
        <source>cannot write %1: %2</source>
        <translation>%1 lässt sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>cannot send on the port %1: %2</source>
        <translation>Senden am Anschluss %1 nicht möglich: %2</translation>
    </message>
    <message>
        <source>no sound output on this machine</source>
        <translation>dieser Rechner hat keine Tonausgabe</translation>
    </message>
    <message>
        <source>the program &quot;%1&quot; cannot be started: %2</source>
        <translation>das Programm „%1“ lässt sich nicht starten: %2</translation>
    </message>
    <message>
        <source>cannot read the settings in %1: %2</source>
        <translation>die Einstellungen in %1 lassen sich nicht lesen: %2</translation>
    </message>
    <message>
        <source>%1 is damaged: it is not an INI file</source>
        <translation>%1 ist beschädigt: es ist keine INI-Datei</translation>
    </message>
    <message>
        <source>cannot create the folder %1 for the settings: %2</source>
        <translation>der Ordner %1 für die Einstellungen lässt sich nicht anlegen: %2</translation>
    </message>
    <message>
        <source>cannot write the settings to %1: another program has locked %2 for half a second</source>
        <translation>die Einstellungen lassen sich nicht in %1 schreiben: ein anderes Programm sperrt %2 seit einer halben Sekunde</translation>
    </message>
    <message>
        <source>the file or its folder cannot be written</source>
        <translation>in die Datei oder ihren Ordner lässt sich nicht schreiben</translation>
    </message>
    <message>
        <source>cannot write the settings to %1: %2</source>
        <translation>die Einstellungen lassen sich nicht in %1 schreiben: %2</translation>
    </message>
    <message>
        <source>cannot read the setting &quot;%1&quot; in %2: %3</source>
        <translation>die Einstellung „%1“ in %2 lässt sich nicht lesen: %3</translation>
    </message>
    <message>
        <source>the serial object of %1 is not responding</source>
        <translation>das serielle Objekt von %1 antwortet nicht</translation>
    </message>
    <message>
        <source>the serial object of %1 has ended</source>
        <translation>das serielle Objekt von %1 wurde beendet</translation>
    </message>
    <message>
        <source>the object gave no reason</source>
        <translation>das Objekt nannte keinen Grund</translation>
    </message>
    <message>
        <source>the port %1 is not open</source>
        <translation>der Anschluss %1 ist nicht geöffnet</translation>
    </message>
    <message>
        <source>the port %1 has vanished; the adapter was unplugged or lost power</source>
        <translation>der Anschluss %1 ist verschwunden; der Adapter wurde abgezogen oder hat keinen Strom</translation>
    </message>
    <message>
        <source>the port %1 failed: %2</source>
        <translation>der Anschluss %1 ist ausgefallen: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a whole number</source>
        <translation>„%1“ ist keine ganze Zahl</translation>
    </message>
    <message>
        <source>the serial ports are numbered; &quot;%1&quot; is not a number</source>
        <translation>die seriellen Anschlüsse haben Nummern; „%1“ ist keine</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not found</source>
        <translation>„%1“ wurde nicht gefunden</translation>
    </message>
    <message>
        <source>Connected</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>%1, connected</source>
        <translation>%1, verbunden</translation>
    </message>
    <message>
        <source>pictures cannot be sent without libcurl: %1</source>
        <translation>ohne libcurl lassen sich keine Bilder senden: %1</translation>
    </message>
</context>
<context>
    <name>orvalis::PortList</name>
    <message>
        <source>This machine has no serial port now. Plug the adapter in: it appears here by itself.</source>
        <translation>Dieser Rechner hat gerade keinen seriellen Anschluss. Den Adapter einstecken: er erscheint hier von selbst.</translation>
    </message>
    <message>
        <source>Not tried</source>
        <translation>Nicht versucht</translation>
    </message>
    <message>
        <source>Trying…</source>
        <translation>Wird versucht…</translation>
    </message>
    <message>
        <source>The unit answers here.</source>
        <translation>Hier antwortet der Sensor.</translation>
    </message>
    <message>
        <source>No answer within 4 seconds</source>
        <translation>Keine Antwort innerhalb von 4 Sekunden</translation>
    </message>
    <message>
        <source>What is connected here is not the unit.</source>
        <translation>Was hier angeschlossen ist, ist nicht der Sensor.</translation>
    </message>
    <message>
        <source>Cannot be opened: %1</source>
        <translation>Lässt sich nicht öffnen: %1</translation>
    </message>
    <message>
        <source>Orvalis itself has it open: see whether it is connected.</source>
        <translation>Orvalis selbst hat ihn geöffnet: bitte prüfen, ob die Verbindung steht.</translation>
    </message>
</context>
<context>
    <name>orvalis::RowsEditor</name>
    <message>
        <source>name</source>
        <extracomment>Grey in the empty boxes of a row: the name of a variable or header, and its value.</extracomment>
        <translation>Name</translation>
    </message>
    <message>
        <source>value</source>
        <translation>Wert</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>orvalis::StandingNotices</name>
    <message>
        <source>Notice</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>&amp;Acknowledge</source>
        <translation>&amp;Bestätigen</translation>
    </message>
</context>
<context>
    <name>orvalis::StatusText</name>
    <message>
        <source>Status</source>
        <translation>Status</translation>
    </message>
</context>
<context>
    <name>orvalis::ValueRow</name>
    <message>
        <source>, not current</source>
        <translation>, nicht aktuell</translation>
    </message>
    <message>
        <source>, rising</source>
        <translation>, steigend</translation>
    </message>
    <message>
        <source>, falling</source>
        <translation>, fallend</translation>
    </message>
    <message>
        <source>, rising over the last 15 minutes</source>
        <translation>, in den letzten 15 Minuten steigend</translation>
    </message>
    <message>
        <source>, falling over the last 15 minutes</source>
        <translation>, in den letzten 15 Minuten fallend</translation>
    </message>
</context>
<context>
    <name>orvalis::WordCard</name>
    <message>
        <source>, not current</source>
        <translation>, nicht aktuell</translation>
    </message>
    <message>
        <source>undetermined</source>
        <translation>unbestimmt</translation>
    </message>
</context>
<context>
    <name>orvalis::Words</name>
    <message>
        <source>&amp;Events…</source>
        <translation>&amp;Ereignisse…</translation>
    </message>
    <message>
        <source>&amp;Place…</source>
        <translation>Stand&amp;ort…</translation>
    </message>
    <message>
        <source>&amp;Messages of the tray icon</source>
        <translation>&amp;Meldungen im Infobereich</translation>
    </message>
    <message>
        <source>A message over the desktop when it becomes safe or unsafe; never in the night theme</source>
        <translation>Eine Meldung auf dem Desktop, wenn es sicher oder unsicher wird; nie in der Nachtansicht</translation>
    </message>
    <message>
        <source>Show the &amp;panel</source>
        <translation>&amp;Hauptfenster zeigen</translation>
    </message>
    <message>
        <source>&amp;Traffic…</source>
        <translation>&amp;Zugriffe…</translation>
    </message>
    <message>
        <source>&amp;Setup…</source>
        <translation>&amp;Einstellungen…</translation>
    </message>
    <message>
        <source>&amp;Web publishing…</source>
        <translation>&amp;Web-Veröffentlichung…</translation>
    </message>
    <message>
        <source>Temperature &amp;graph…</source>
        <translation>&amp;Temperaturverlauf…</translation>
    </message>
    <message>
        <source>Wind grap&amp;h…</source>
        <translation>Wind&amp;verlauf…</translation>
    </message>
    <message>
        <source>Rain and &amp;light graph…</source>
        <translation>Verlauf von &amp;Regen und Licht…</translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 gibt es schon.
Soll die Datei ersetzt werden?</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Temperatures over: </source>
        <translation>Temperaturen über: </translation>
    </message>
    <message>
        <source>No readings:</source>
        <translation>Keine Messung:</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>Ton</translation>
    </message>
    <message>
        <source>Played when it begins; ticking it asks for the file</source>
        <translation>Wird zu Beginn abgespielt; Ankreuzen fragt nach der Datei</translation>
    </message>
    <message>
        <source>Plays this sound now</source>
        <translation>Spielt diesen Ton jetzt ab</translation>
    </message>
    <message>
        <source>Program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>Started when it begins; ticking it asks for the file</source>
        <translation>Wird zu Beginn gestartet; Ankreuzen fragt nach der Datei</translation>
    </message>
    <message>
        <source>Starts this program now, with ORVALIS_TEST=1</source>
        <translation>Startet dieses Programm jetzt, mit ORVALIS_TEST=1</translation>
    </message>
    <message>
        <source>%1: %2 file</source>
        <translation>%1: %2, Datei</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>%1: %2 test</source>
        <translation>%1: %2, Test</translation>
    </message>
    <message>
        <source>Standards web site</source>
        <translation>Website des Standards</translation>
    </message>
    <message>
        <source>User guide</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>clear</source>
        <extracomment>Of the sky.</extracomment>
        <translation>klar</translation>
    </message>
    <message>
        <source>partly cloudy</source>
        <translation>teils bewölkt</translation>
    </message>
    <message>
        <source>cloudy</source>
        <translation>bewölkt</translation>
    </message>
    <message>
        <source>calm</source>
        <translation>windstill</translation>
    </message>
    <message>
        <source>breeze</source>
        <translation>leichter Wind</translation>
    </message>
    <message>
        <source>windy</source>
        <translation>windig</translation>
    </message>
    <message>
        <source>dry</source>
        <translation>trocken</translation>
    </message>
    <message>
        <source>damp</source>
        <translation>feucht</translation>
    </message>
    <message>
        <source>rain</source>
        <translation>Regen</translation>
    </message>
    <message>
        <source>dark</source>
        <translation>dunkel</translation>
    </message>
    <message>
        <source>dusk</source>
        <translation>Dämmerung</translation>
    </message>
    <message>
        <source>day</source>
        <translation>Tag</translation>
    </message>
    <message>
        <source>last known sky</source>
        <translation>zuletzt bekannter Himmel</translation>
    </message>
    <message>
        <source>sky</source>
        <translation>Himmel</translation>
    </message>
    <message>
        <source>%1, difference %2 %3</source>
        <translation>%1, Differenz %2 %3</translation>
    </message>
    <message>
        <source>on</source>
        <translation>an</translation>
    </message>
    <message>
        <source>undetermined</source>
        <translation>unbestimmt</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>The folder is not responding. It may be on a network that is unavailable.</source>
        <translation>Der Ordner antwortet nicht. Vielleicht liegt er in einem Netzwerk, das nicht erreichbar ist.</translation>
    </message>
    <message>
        <source>&amp;Give up</source>
        <translation>&amp;Aufgeben</translation>
    </message>
    <message>
        <source>The guide is missing: it is one of the program&apos;s files. Install Orvalis again.</source>
        <translation>Das Handbuch fehlt: es gehört zu den Dateien des Programms. Bitte Orvalis neu installieren.</translation>
    </message>
    <message>
        <source>PNG Pictures (*.png)</source>
        <translation>PNG-Bilder (*.png)</translation>
    </message>
    <message>
        <source>PDF Documents (*.pdf)</source>
        <translation>PDF-Dokumente (*.pdf)</translation>
    </message>
    <message>
        <source>Comma-separated Values (*.csv)</source>
        <translation>CSV-Tabellen (*.csv)</translation>
    </message>
    <message>
        <source>Sky</source>
        <extracomment>The temperature of the sky, as the next ones are temperatures.</extracomment>
        <translation>Himmel</translation>
    </message>
    <message>
        <source>Clear sky</source>
        <extracomment>How cold the sky is when it is clear.</extracomment>
        <translation>Klarer Himmel</translation>
    </message>
    <message>
        <source>Ambient</source>
        <translation>Umgebung</translation>
    </message>
    <message>
        <source>Dew point</source>
        <translation>Taupunkt</translation>
    </message>
    <message>
        <source>Wind</source>
        <translation>Wind</translation>
    </message>
    <message>
        <source>Gust</source>
        <translation>Böen</translation>
    </message>
    <message>
        <source>Humidity</source>
        <translation>Luftfeuchte</translation>
    </message>
    <message>
        <source>Rain</source>
        <translation>Regen</translation>
    </message>
    <message>
        <source>Light</source>
        <extracomment>The light of the sky.</extracomment>
        <translation>Licht</translation>
    </message>
    <message>
        <source>counts</source>
        <extracomment>After a number: what a sensor counts, a reading without a unit.</extracomment>
        <translation>Counts</translation>
    </message>
    <message>
        <source>counts, more is wetter</source>
        <translation>Counts, mehr ist nasser</translation>
    </message>
    <message>
        <source>counts, more is darker</source>
        <translation>Counts, mehr ist dunkler</translation>
    </message>
    <message>
        <source>Temperatures</source>
        <translation>Temperaturen</translation>
    </message>
    <message>
        <source>Wind and humidity</source>
        <translation>Wind und Luftfeuchte</translation>
    </message>
    <message>
        <source>Rain and light</source>
        <translation>Regen und Licht</translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <extracomment>At an axis: what it shows, and its unit.</extracomment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>safe</source>
        <extracomment>The verdict: a roof may be open.</extracomment>
        <translation>sicher</translation>
    </message>
    <message>
        <source>unsafe</source>
        <extracomment>The verdict: a roof must be closed. It is also shown in capital letters.</extracomment>
        <translation>unsicher</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <extracomment>A range of values or of times.</extracomment>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>UNSAFE by the unit, verdict not recorded</source>
        <translation>UNSICHER laut Sensor, Urteil nicht aufgezeichnet</translation>
    </message>
    <message>
        <source>verdict not recorded</source>
        <translation>Urteil nicht aufgezeichnet</translation>
    </message>
    <message>
        <source>UNSAFE at times: %1</source>
        <extracomment>Followed by the reasons.</extracomment>
        <translation>zeitweise UNSICHER: %1</translation>
    </message>
    <message>
        <source>UNSAFE: %1</source>
        <translation>UNSICHER: %1</translation>
    </message>
    <message>
        <source>Text Files (*.txt)|*.txt</source>
        <translation>Textdateien (*.txt)|*.txt</translation>
    </message>
    <message>
        <source>No picture yet</source>
        <translation>Noch kein Bild</translation>
    </message>
    <message>
        <source>This machine only</source>
        <extracomment>Of the machine&apos;s network addresses.</extracomment>
        <translation>Nur dieser Rechner</translation>
    </message>
    <message>
        <source>All interfaces</source>
        <translation>Alle Netzwerke</translation>
    </message>
    <message>
        <source>All interfaces, IPv6 too</source>
        <translation>Alle Netzwerke, auch IPv6</translation>
    </message>
    <message>
        <source>↑ Not an address: nothing would be served there</source>
        <translation>↑ Keine Adresse: dort würde nichts bereitgestellt</translation>
    </message>
    <message>
        <source>Only programs on this machine can read.</source>
        <translation>Nur Programme auf diesem Rechner können die Werte lesen.</translation>
    </message>
    <message>
        <source>Everybody on the network can read; nothing can be changed from there.</source>
        <translation>Jeder im Netzwerk kann die Werte lesen; ändern lässt sich von dort nichts.</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Caller</source>
        <translation>Aufrufer</translation>
    </message>
    <message>
        <source>Call</source>
        <extracomment>A noun: the member that was called.</extracomment>
        <translation>Aufruf</translation>
    </message>
    <message>
        <source>Answer</source>
        <extracomment>A noun.</extracomment>
        <translation>Antwort</translation>
    </message>
    <message>
        <source>Took</source>
        <extracomment>How long a call took.</extracomment>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>Seconds.</extracomment>
        <translation>%1&#xa0;s</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <extracomment>Milliseconds.</extracomment>
        <translation>%1&#xa0;ms</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Datei…</translation>
    </message>
    <message>
        <source>Nothing is chosen yet</source>
        <translation>Noch nichts gewählt</translation>
    </message>
    <message>
        <source>The guide, at this window&apos;s section (F1)</source>
        <translation>Das Handbuch, beim Abschnitt dieses Fensters (F1)</translation>
    </message>
    <message>
        <source>&amp;Assistant…</source>
        <translation>Ass&amp;istent…</translation>
    </message>
</context>
<context>
    <name>orvalis::frmAssistant</name>
    <message>
        <source>Orvalis Assistant</source>
        <translation>Orvalis-Assistent</translation>
    </message>
    <message>
        <source>All of this is in the setup too. &quot;Skip&quot; leaves every setting as it is; the assistant stays in the menu Orvalis.</source>
        <translation>All das steht auch in den Einstellungen. „Überspringen“ lässt alles, wie es ist; der Assistent bleibt im Menü Orvalis.</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>S&amp;kip</source>
        <translation>Übersprin&amp;gen</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>The unit</source>
        <translation>Der Sensor</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Maßeinheiten</translation>
    </message>
    <message>
        <source>What makes it unsafe</source>
        <translation>Wann es unsicher ist</translation>
    </message>
    <message>
        <source>What to do about it</source>
        <translation>Was dann geschieht</translation>
    </message>
    <message>
        <source>Step %1 of %2</source>
        <translation>Schritt %1 von %2</translation>
    </message>
    <message>
        <source>&amp;Finish</source>
        <translation>&amp;Fertig</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>Nothing was stored: %1

Try &quot;Finish&quot; again once that is mended.</source>
        <translation>Es wurde nichts gespeichert: %1

Nochmals „Fertig“ drücken, wenn das behoben ist.</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>A&amp;nhalten</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>S&amp;uchen</translation>
    </message>
    <message>
        <source>typed below</source>
        <translation>unten eingegeben</translation>
    </message>
    <message>
        <source>Searching…</source>
        <translation>Es wird gesucht…</translation>
    </message>
    <message>
        <source>Found: it is the port to use below.</source>
        <translation>Gefunden: der Anschluss ist unten eingetragen.</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Angehalten</translation>
    </message>
    <message>
        <source>No unit was found. Has it power, is its adapter plugged in, is its port ticked? You can go on without it.</source>
        <translation>Kein Sensor gefunden. Hat er Strom, ist sein Adapter eingesteckt, ist sein Anschluss angekreuzt? Es geht auch ohne ihn weiter.</translation>
    </message>
    <message>
        <source>Demo mode is on: simulated values</source>
        <translation>Der Demomodus ist eingeschaltet: simulierte Werte</translation>
    </message>
    <message>
        <source>Connecting to %1…</source>
        <translation>Verbindung mit %1 wird aufgebaut…</translation>
    </message>
    <message>
        <source>Connected to %1</source>
        <translation>Verbunden mit %1</translation>
    </message>
    <message>
        <source>Cannot connect: %1</source>
        <translation>Keine Verbindung: %1</translation>
    </message>
    <message>
        <source>Cannot connect: %1
&quot;Back&quot; leads to the search.</source>
        <translation>Keine Verbindung: %1
„Zurück“ führt zur Suche.</translation>
    </message>
    <message>
        <source>No readings yet</source>
        <translation>Noch keine Messung</translation>
    </message>
    <message>
        <source>Now %1 %2, wind %3 %4</source>
        <translation>Jetzt %1 %2, Wind %3 %4</translation>
    </message>
    <message>
        <source>Where the readings come from</source>
        <translation>Woher die Messwerte kommen</translation>
    </message>
    <message>
        <source>A sensor &amp;unit on a serial port</source>
        <translation>Wetter&amp;sensor an einem seriellen Anschluss</translation>
    </message>
    <message>
        <source>The si&amp;mulated unit</source>
        <translation>Der si&amp;mulierte Sensor</translation>
    </message>
    <message>
        <source>A program that behaves on a serial line as the unit does.</source>
        <translation>Ein Programm, das sich an einer seriellen Leitung wie der Sensor verhält.</translation>
    </message>
    <message>
        <source>&amp;Demo mode</source>
        <translation>&amp;Demomodus</translation>
    </message>
    <message>
        <source>Made-up values, to look around. It is never safe then.</source>
        <translation>Erfundene Werte, um sich umzusehen. Sicher ist es dann nie.</translation>
    </message>
    <message>
        <source>The simulated unit</source>
        <translation>Der simulierte Sensor</translation>
    </message>
    <message>
        <source>Start it in a terminal with this command, and leave it running:</source>
        <translation>Mit diesem Befehl in einem Terminal starten und laufen lassen:</translation>
    </message>
    <message>
        <source>Command that starts the simulated unit</source>
        <translation>Befehl, der den simulierten Sensor startet</translation>
    </message>
    <message>
        <source>C&amp;opy</source>
        <translation>K&amp;opieren</translation>
    </message>
    <message>
        <source>Search for the unit</source>
        <translation>Nach dem Sensor suchen</translation>
    </message>
    <message>
        <source>Opening a port can reset what is connected to it. Untick the ports of a mount, a focuser or a roof. The search opens the others one after the other, sends the unit&apos;s greeting and nothing else, and closes them again.</source>
        <translation>Das Öffnen eines Anschlusses kann das Gerät daran zurücksetzen. Die Anschlüsse von Montierung, Fokussierer und Dach abwählen. Die Suche öffnet die übrigen nacheinander, sendet nur die Begrüßung des Sensors und schließt sie wieder.</translation>
    </message>
    <message>
        <source>Ports to search</source>
        <translation>Anschlüsse für die Suche</translation>
    </message>
    <message>
        <source>The port to use</source>
        <translation>Der Anschluss des Sensors</translation>
    </message>
    <message>
        <source>Choose a port, or type a device path or a port number</source>
        <translation>Einen Anschluss wählen oder Gerätepfad oder Anschlussnummer eingeben</translation>
    </message>
    <message>
        <source>Serial &amp;port:</source>
        <translation>Serieller &amp;Anschluss:</translation>
    </message>
    <message>
        <source>&amp;Connect to it with &quot;Next&quot;</source>
        <translation>Mit „Weiter“ ver&amp;binden</translation>
    </message>
    <message>
        <source>It gets the settings of its alarms then, and you see its readings.</source>
        <translation>Der Sensor bekommt dann die Einstellungen seiner Alarme, und seine Messwerte sind zu sehen.</translation>
    </message>
    <message>
        <source>At e&amp;very start too, and again when it is lost</source>
        <translation>Auch bei jedem S&amp;tart und nach jedem Abbruch</translation>
    </message>
    <message>
        <source>For the panel, the graphs and their pictures. Other programs, logs and uploads get the same whatever you choose.</source>
        <translation>Für das Hauptfenster, die Verläufe und ihre Bilder. Andere Programme, Protokolle und Uploads bekommen immer dasselbe.</translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <source>Degrees &amp;Celsius (°C)</source>
        <translation>Grad &amp;Celsius (°C)</translation>
    </message>
    <message>
        <source>Degrees &amp;Fahrenheit (°F)</source>
        <translation>Grad Fahren&amp;heit (°F)</translation>
    </message>
    <message>
        <source>Wind</source>
        <translation>Wind</translation>
    </message>
    <message>
        <source>Miles per &amp;hour (mph)</source>
        <translation>&amp;Meilen pro Stunde (mph)</translation>
    </message>
    <message>
        <source>Kilo&amp;metres per hour (km/h)</source>
        <translation>&amp;Kilometer pro Stunde (km/h)</translation>
    </message>
    <message>
        <source>Metres per secon&amp;d (m/s)</source>
        <translation>Meter &amp;pro Sekunde (m/s)</translation>
    </message>
    <message>
        <source>Kn&amp;ots (kn)</source>
        <translation>K&amp;noten (kn)</translation>
    </message>
    <message>
        <source>A roof may open only while it is safe. Without a reading of the last ten seconds it never is, nor while the unit itself alarms. These count as well, if you tick them:</source>
        <translation>Ein Dach darf nur öffnen, solange es sicher ist. Ohne Messung aus den letzten zehn Sekunden ist es das nie, auch nicht, solange der Sensor selbst Alarm gibt. Angekreuzt zählt außerdem:</translation>
    </message>
    <message>
        <source>Unsafe as well</source>
        <translation>Ebenfalls unsicher</translation>
    </message>
    <message>
        <source>&amp;Rain: &quot;Damp&quot; or &quot;Rain&quot;</source>
        <translation>&amp;Regen: „Damp“ oder „Rain“</translation>
    </message>
    <message>
        <source>Leave this on: an alarm that is switched off in the unit must not keep a wet roof open.</source>
        <translation>Eingeschaltet lassen: ein im Sensor ausgeschalteter Alarm darf kein Dach im Regen offen halten.</translation>
    </message>
    <message>
        <source>&amp;Wind: &quot;Windy&quot;</source>
        <translation>W&amp;ind: „Windy“</translation>
    </message>
    <message>
        <source>Closes the roof above the speed of &quot;Windy&quot;, for a roof or a telescope that wind can damage.</source>
        <translation>Schließt das Dach über der Geschwindigkeit von „Windy“, wenn Wind dem Dach oder Teleskop schaden kann.</translation>
    </message>
    <message>
        <source>&amp;Clouds: &quot;Cloudy&quot;</source>
        <translation>&amp;Bewölkung: „Cloudy“</translation>
    </message>
    <message>
        <source>Closes the roof under a cloudy sky, before rain can begin.</source>
        <translation>Schließt das Dach bei bewölktem Himmel, bevor Regen einsetzen kann.</translation>
    </message>
    <message>
        <source>&amp;Daylight: &quot;Day&quot;</source>
        <translation>&amp;Tageslicht: „Day“</translation>
    </message>
    <message>
        <source>Keeps the roof closed by day. Not for solar telescopes.</source>
        <translation>Hält das Dach bei Tag geschlossen. Nicht für Sonnenteleskope.</translation>
    </message>
    <message>
        <source>&amp;All of it in the setup…</source>
        <translation>&amp;Alles in den Einstellungen…</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Benachrichtigung</translation>
    </message>
    <message>
        <source>A sound or a program of yours when it becomes unsafe, such as one that closes the roof.</source>
        <translation>Ein Ton oder ein eigenes Programm, wenn es unsicher wird, etwa eines, das das Dach schließt.</translation>
    </message>
    <message>
        <source>&amp;Alerts…</source>
        <translation>&amp;Benachrichtigung…</translation>
    </message>
    <message>
        <source>Observatory programs</source>
        <translation>Programme der Sternwarte</translation>
    </message>
    <message>
        <source>Programs on this machine that know the driver find it by themselves; nothing has to be set for them.</source>
        <translation>Programme auf diesem Rechner, die den Treiber kennen, finden ihn von selbst; für sie ist nichts einzustellen.</translation>
    </message>
    <message>
        <source>&amp;Serve the readings over HTTP</source>
        <translation>Messwerte über &amp;HTTP bereitstellen</translation>
    </message>
    <message>
        <source>For ASCOM Alpaca, for INDI with KStars and Ekos, and for your browser. On this machine alone, until you open it to the network.</source>
        <translation>Für ASCOM Alpaca, für INDI mit KStars und Ekos und für den Browser. Nur auf diesem Rechner, bis man es für das Netzwerk öffnet.</translation>
    </message>
    <message>
        <source>Net&amp;work…</source>
        <translation>&amp;Netzwerk…</translation>
    </message>
    <message>
        <source>MQTT</source>
        <translation>MQTT</translation>
    </message>
    <message>
        <source>Readings for a broker: Home Assistant, Node-RED, several domes.</source>
        <translation>Messwerte für einen Broker: Home Assistant, Node-RED, mehrere Kuppeln.</translation>
    </message>
    <message>
        <source>M&amp;QTT…</source>
        <translation>M&amp;QTT…</translation>
    </message>
    <message>
        <source>Window</source>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Keep the panel on &amp;top of other windows</source>
        <translation>Hauptfenster immer im V&amp;ordergrund</translation>
    </message>
</context>
<context>
    <name>orvalis::frmEvents</name>
    <message>
        <source>Orvalis Events</source>
        <translation>Orvalis-Ereignisse</translation>
    </message>
    <message>
        <source>&amp;Filter:</source>
        <translation>&amp;Filter:</translation>
    </message>
    <message>
        <source>words that an event has</source>
        <translation>Wörter, die ein Ereignis enthält</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Copies what is selected, or all that is shown</source>
        <translation>Kopiert die Auswahl oder alles, was zu sehen ist</translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation>&amp;Speichern…</translation>
    </message>
    <message>
        <source>Saves all that is shown as a text file</source>
        <translation>Speichert alles, was zu sehen ist, als Textdatei</translation>
    </message>
    <message>
        <source>No events yet.</source>
        <translation>Noch keine Ereignisse.</translation>
    </message>
    <message>
        <source>No event has these words.</source>
        <translation>Kein Ereignis enthält diese Wörter.</translation>
    </message>
    <message>
        <source>Copied what is selected</source>
        <translation>Auswahl kopiert</translation>
    </message>
    <message>
        <source>Save Events</source>
        <translation>Ereignisse speichern</translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation>%1 wird gespeichert…</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Gespeichert als %1</translation>
    </message>
    <message>
        <source>Copied all that is shown</source>
        <translation>Alles Gezeigte kopiert</translation>
    </message>
</context>
<context>
    <name>orvalis::frmFormSubmit</name>
    <message>
        <source>Orvalis Web Publishing</source>
        <translation>Orvalis: Web-Veröffentlichung</translation>
    </message>
    <message>
        <source>&amp;Request</source>
        <translation>An&amp;frage</translation>
    </message>
    <message>
        <source>Variables and &amp;headers</source>
        <translation>&amp;Variablen und Header</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Station &amp;ID:</source>
        <translation>Stations-&amp;ID:</translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation>&amp;Passwort:</translation>
    </message>
    <message>
        <source>Used for both readings and picture</source>
        <translation>Gilt für Messwerte und Bild</translation>
    </message>
    <message>
        <source>Webcam &amp;name:</source>
        <translation>Webcam-&amp;Name:</translation>
    </message>
    <message>
        <source>Webcam pass&amp;word:</source>
        <translation>Webcam-Pass&amp;wort:</translation>
    </message>
    <message>
        <source>Same as the password above</source>
        <translation>Dasselbe Passwort wie oben</translation>
    </message>
    <message>
        <source>Readings</source>
        <translation>Messwerte</translation>
    </message>
    <message>
        <source>&amp;URL:</source>
        <translation>&amp;URL:</translation>
    </message>
    <message>
        <source>Panel picture</source>
        <translation>Bild des Hauptfensters</translation>
    </message>
    <message>
        <source>Webcam ser&amp;ver:</source>
        <translation>Webcam-Se&amp;rver:</translation>
    </message>
    <message>
        <source>FTP server, with a folder if there is one</source>
        <translation>FTP-Server, gegebenenfalls mit Ordner</translation>
    </message>
    <message>
        <source>Use &amp;built-in FTP</source>
        <translation>Eingeb&amp;autes FTP verwenden</translation>
    </message>
    <message>
        <source>Otherwise two external programs for Windows convert and send the picture</source>
        <translation>Sonst wandeln und senden zwei externe Windows-Programme das Bild</translation>
    </message>
    <message>
        <source>Last captured panel picture</source>
        <translation>Letztes Bild des Hauptfensters</translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <extracomment>A list of intervals to a screen reader: the text of the check box, and the unit.</extracomment>
        <translation>%1 Sekunden</translation>
    </message>
    <message>
        <source>s</source>
        <extracomment>Seconds.</extracomment>
        <translation>s</translation>
    </message>
    <message>
        <source>Request</source>
        <translation>Anfrage</translation>
    </message>
    <message>
        <source>No response yet.</source>
        <translation>Noch keine Antwort.</translation>
    </message>
    <message>
        <source>Resp&amp;onse:</source>
        <translation>Antw&amp;ort:</translation>
    </message>
    <message>
        <source>&amp;Method:</source>
        <translation>&amp;Methode:</translation>
    </message>
    <message>
        <source>GET sends the values in the URL, the others in the body</source>
        <translation>GET sendet die Werte in der URL, die anderen im Rumpf</translation>
    </message>
    <message>
        <source>Additional variables</source>
        <translation>Weitere Variablen</translation>
    </message>
    <message>
        <source>&amp;Add variable</source>
        <translation>Variable &amp;hinzufügen</translation>
    </message>
    <message>
        <source>Variable name</source>
        <translation>Name der Variable</translation>
    </message>
    <message>
        <source>Variable value</source>
        <translation>Wert der Variable</translation>
    </message>
    <message>
        <source>Additional headers</source>
        <translation>Weitere Header</translation>
    </message>
    <message>
        <source>A&amp;dd header</source>
        <translation>Hea&amp;der hinzufügen</translation>
    </message>
    <message>
        <source>Header name</source>
        <translation>Name des Headers</translation>
    </message>
    <message>
        <source>Header value</source>
        <translation>Wert des Headers</translation>
    </message>
    <message>
        <source>Kept until the program ends.</source>
        <translation>Bleibt bis zum Programmende.</translation>
    </message>
    <message>
        <source>No errors.</source>
        <translation>Keine Fehler.</translation>
    </message>
    <message>
        <source>&amp;Errors:</source>
        <translation>F&amp;ehler:</translation>
    </message>
    <message>
        <source>Sends the readings now</source>
        <translation>Sendet die Messwerte jetzt</translation>
    </message>
    <message>
        <source>Captures a picture of the panel and sends it now</source>
        <translation>Nimmt ein Bild des Hauptfensters auf und sendet es jetzt</translation>
    </message>
    <message>
        <source>%1 Uploads are off: the button asks, and sends once.</source>
        <extracomment>Follows the sentences on account and server, which are %1.</extracomment>
        <translation>%1 Uploads sind aus: die Schaltfläche fragt nach und sendet einmal.</translation>
    </message>
    <message>
        <source>The readings are not sent, because that is not allowed above.</source>
        <translation>Die Messwerte werden nicht gesendet, weil es oben nicht erlaubt ist.</translation>
    </message>
    <message>
        <source>Pictures are not sent, because that is not allowed above.</source>
        <translation>Bilder werden nicht gesendet, weil es oben nicht erlaubt ist.</translation>
    </message>
    <message>
        <source>The readings are not sent, because that is not allowed above. Send once?</source>
        <translation>Die Messwerte werden nicht gesendet, weil es oben nicht erlaubt ist. Einmal senden?</translation>
    </message>
    <message>
        <source>Pictures are not sent, because that is not allowed above. Send once?</source>
        <translation>Bilder werden nicht gesendet, weil es oben nicht erlaubt ist. Einmal senden?</translation>
    </message>
    <message>
        <source>&amp;Send once</source>
        <translation>&amp;Einmal senden</translation>
    </message>
</context>
<context>
    <name>orvalis::frmGraph</name>
    <message>
        <source>Orvalis %1</source>
        <extracomment>The title of a graph&apos;s window: the program, and what it shows.</extracomment>
        <translation>Orvalis: %1</translation>
    </message>
    <message>
        <source>1 h</source>
        <extracomment>On a button: one hour.</extracomment>
        <translation>1&#xa0;h</translation>
    </message>
    <message>
        <source>Show the last hour</source>
        <translation>Die letzte Stunde zeigen</translation>
    </message>
    <message>
        <source>Last hour</source>
        <translation>Letzte Stunde</translation>
    </message>
    <message>
        <source>12 h</source>
        <translation>12&#xa0;h</translation>
    </message>
    <message>
        <source>Show the last 12 hours</source>
        <translation>Die letzten 12 Stunden zeigen</translation>
    </message>
    <message>
        <source>Last 12 hours</source>
        <translation>Letzte 12 Stunden</translation>
    </message>
    <message>
        <source>48 h</source>
        <translation>48&#xa0;h</translation>
    </message>
    <message>
        <source>Show the last 48 hours</source>
        <translation>Die letzten 48 Stunden zeigen</translation>
    </message>
    <message>
        <source>Last 48 hours</source>
        <translation>Letzte 48 Stunden</translation>
    </message>
    <message>
        <source>7 days</source>
        <translation>7 Tage</translation>
    </message>
    <message>
        <source>Show the last 7 days</source>
        <translation>Die letzten 7 Tage zeigen</translation>
    </message>
    <message>
        <source>Last 7 days</source>
        <translation>Letzte 7 Tage</translation>
    </message>
    <message>
        <source>30 days</source>
        <translation>30 Tage</translation>
    </message>
    <message>
        <source>Show the last 30 days</source>
        <translation>Die letzten 30 Tage zeigen</translation>
    </message>
    <message>
        <source>Last 30 days</source>
        <translation>Letzte 30 Tage</translation>
    </message>
    <message>
        <source>400 days</source>
        <translation>400 Tage</translation>
    </message>
    <message>
        <source>Show the last 400 days</source>
        <translation>Die letzten 400 Tage zeigen</translation>
    </message>
    <message>
        <source>Last 400 days</source>
        <translation>Letzte 400 Tage</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <extracomment>A tool tip: what a button does, and the key for it.</extracomment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message>
        <source>Show &amp;all</source>
        <translation>&amp;Alles zeigen</translation>
    </message>
    <message>
        <source>Show the whole history; a double click on the graph does the same</source>
        <translation>Den ganzen Verlauf zeigen; ein Doppelklick in den Verlauf tut dasselbe</translation>
    </message>
    <message>
        <source>Update rate</source>
        <translation>Aktualisierung</translation>
    </message>
    <message>
        <source>How often the graph is updated</source>
        <translation>Wie oft der Verlauf aktualisiert wird</translation>
    </message>
    <message>
        <source>Save &amp;picture…</source>
        <translation>&amp;Bild speichern…</translation>
    </message>
    <message>
        <source>Save this view as PNG or PDF</source>
        <translation>Diese Ansicht als PNG oder PDF speichern</translation>
    </message>
    <message>
        <source>Save Picture</source>
        <translation>Bild speichern</translation>
    </message>
    <message>
        <source>Save &amp;values…</source>
        <translation>&amp;Werte speichern…</translation>
    </message>
    <message>
        <source>Save the values of this view as CSV</source>
        <translation>Die Werte dieser Ansicht als CSV speichern</translation>
    </message>
    <message>
        <source>Save Values</source>
        <translation>Werte speichern</translation>
    </message>
    <message>
        <source>Save v&amp;erdicts…</source>
        <translation>&amp;Urteile speichern…</translation>
    </message>
    <message>
        <source>Save the verdicts of this view, with their reasons, as CSV</source>
        <translation>Die Urteile dieser Ansicht mit ihren Gründen als CSV speichern</translation>
    </message>
    <message>
        <source>Save Verdicts</source>
        <translation>Urteile speichern</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Reading the verdicts…</source>
        <translation>Urteile werden gelesen…</translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation>%1 wird gespeichert…</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Gespeichert als %1</translation>
    </message>
    <message>
        <source>Cannot save %1: %2</source>
        <translation>%1 lässt sich nicht speichern: %2</translation>
    </message>
</context>
<context>
    <name>orvalis::frmHandBox</name>
    <message>
        <source>counts</source>
        <translation>Counts</translation>
    </message>
    <message>
        <source>higher is darker</source>
        <translation>höher ist dunkler</translation>
    </message>
    <message>
        <source>Ambient temperature</source>
        <translation>Umgebungstemperatur</translation>
    </message>
    <message>
        <source>Sensor body:</source>
        <translation>Gehäuse:</translation>
    </message>
    <message>
        <source>Temperature of the sensor body</source>
        <translation>Temperatur des Sensorgehäuses</translation>
    </message>
    <message>
        <source>Dew point:</source>
        <translation>Taupunkt:</translation>
    </message>
    <message>
        <source>Temperature at which dew forms</source>
        <translation>Temperatur, bei der sich Tau bildet</translation>
    </message>
    <message>
        <source>Sky:</source>
        <translation>Himmel:</translation>
    </message>
    <message>
        <source>Measured sky temperature</source>
        <translation>Gemessene Himmelstemperatur</translation>
    </message>
    <message>
        <source>Clear sky:</source>
        <translation>Klarer Himmel:</translation>
    </message>
    <message>
        <source>Calculated temperature of a clear sky</source>
        <translation>Berechnete Temperatur eines klaren Himmels</translation>
    </message>
    <message>
        <source>Difference:</source>
        <translation>Differenz:</translation>
    </message>
    <message>
        <source>Ambient minus sky temperature</source>
        <translation>Umgebungs- minus Himmelstemperatur</translation>
    </message>
    <message>
        <source>Humidity:</source>
        <translation>Luftfeuchte:</translation>
    </message>
    <message>
        <source>Relative humidity</source>
        <translation>Relative Luftfeuchte</translation>
    </message>
    <message>
        <source>Wind:</source>
        <translation>Wind:</translation>
    </message>
    <message>
        <source>Current wind speed</source>
        <translation>Aktuelle Windgeschwindigkeit</translation>
    </message>
    <message>
        <source>Wind average:</source>
        <translation>Wind im Mittel:</translation>
    </message>
    <message>
        <source>Average wind speed</source>
        <translation>Mittlere Windgeschwindigkeit</translation>
    </message>
    <message>
        <source>Wind gust:</source>
        <translation>Böen:</translation>
    </message>
    <message>
        <source>Highest recent wind speed</source>
        <translation>Höchste Windgeschwindigkeit der letzten Zeit</translation>
    </message>
    <message>
        <source>Rain:</source>
        <translation>Regen:</translation>
    </message>
    <message>
        <source>Rain sensor; green below the threshold, red above</source>
        <translation>Regensensor; unter der Schwelle grün, darüber rot</translation>
    </message>
    <message>
        <source>Light:</source>
        <translation>Licht:</translation>
    </message>
    <message>
        <source>Light sensor; higher is darker</source>
        <translation>Lichtsensor; höher ist dunkler</translation>
    </message>
    <message>
        <source>DEMO — simulated values</source>
        <translation>DEMO — simulierte Werte</translation>
    </message>
    <message>
        <source>Verdict</source>
        <translation>Urteil</translation>
    </message>
    <message>
        <source>UNSAFE</source>
        <translation>UNSICHER</translation>
    </message>
    <message>
        <source>Sky</source>
        <translation>Himmel</translation>
    </message>
    <message>
        <source>Wind</source>
        <translation>Wind</translation>
    </message>
    <message>
        <source>Rain</source>
        <translation>Regen</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Licht</translation>
    </message>
    <message>
        <source>Heater</source>
        <translation>Heizung</translation>
    </message>
    <message>
        <source>Relay</source>
        <translation>Relais</translation>
    </message>
    <message>
        <source>How many readings the temperatures are averaged over</source>
        <translation>Über wie viele Messungen die Temperaturen gemittelt werden</translation>
    </message>
    <message>
        <source>Hu&amp;midity curve:</source>
        <translation>Feuchte&amp;kurve:</translation>
    </message>
    <message>
        <source>A value below 2 selects the humidity sensor&apos;s other temperature curve</source>
        <translation>Ein Wert unter 2 wählt die andere Temperaturkurve des Feuchtesensors</translation>
    </message>
    <message>
        <source>Humidity curve</source>
        <translation>Feuchtekurve</translation>
    </message>
    <message>
        <source>Setup…</source>
        <translation>Einstellungen…</translation>
    </message>
    <message>
        <source>&amp;Orvalis</source>
        <translation>&amp;Orvalis</translation>
    </message>
    <message>
        <source>Ve&amp;rdict</source>
        <translation>&amp;Urteil</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>Hel&amp;p</source>
        <translation>Hil&amp;fe</translation>
    </message>
    <message>
        <source>&amp;Night theme</source>
        <translation>&amp;Nachtansicht</translation>
    </message>
    <message>
        <source>Red on black, to preserve night vision</source>
        <translation>Rot auf Schwarz, schont die Dunkeladaption der Augen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Hu&amp;midity curve</source>
        <translation>&amp;Feuchtekurve</translation>
    </message>
    <message>
        <source>Shows the field that selects the humidity sensor&apos;s temperature curve</source>
        <translation>Zeigt das Feld, das die Temperaturkurve des Feuchtesensors wählt</translation>
    </message>
    <message>
        <source>&amp;User guide</source>
        <translation>&amp;Handbuch</translation>
    </message>
    <message>
        <source>User guide in the &amp;browser</source>
        <translation>Handbuch im &amp;Browser</translation>
    </message>
    <message>
        <source>&amp;Standards web site</source>
        <translation>Website des &amp;Standards</translation>
    </message>
    <message>
        <source>Night</source>
        <translation>Nacht</translation>
    </message>
    <message>
        <source>Night theme</source>
        <translation>Nachtansicht</translation>
    </message>
    <message>
        <source>&amp;Force unsafe</source>
        <translation>&amp;Auf unsicher setzen</translation>
    </message>
    <message>
        <source>Unsafe for every program until it is released here, even over a restart</source>
        <translation>Unsicher für jedes Programm, bis es hier aufgehoben wird, auch über einen Neustart hinweg</translation>
    </message>
    <message>
        <source>&amp;Test unsafe for 30 s</source>
        <translation>30&#xa0;s unsicher &amp;testen</translation>
    </message>
    <message>
        <source>Shows what your roof and other programs do; choosing it again ends the test</source>
        <translation>Zeigt, was das Dach und andere Programme tun; nochmals wählen beendet den Test</translation>
    </message>
    <message>
        <source>Find the &amp;unit…</source>
        <translation>Sensor &amp;suchen…</translation>
    </message>
    <message>
        <source>Opens the assistant, which can search for the unit on other ports</source>
        <translation>Öffnet den Assistenten, der den Sensor an anderen Anschlüssen suchen kann</translation>
    </message>
</context>
<context>
    <name>orvalis::frmPlace</name>
    <message>
        <source>Orvalis Place</source>
        <translation>Orvalis: Standort</translation>
    </message>
    <message>
        <source>Where the observatory is, for the sun, dusk and dawn on the panel. It is sent nowhere.</source>
        <translation>Wo die Sternwarte steht, für Sonne und astronomische Nacht im Hauptfenster. Der Standort wird nirgendwohin gesendet.</translation>
    </message>
    <message>
        <source>Degrees, north is positive; or as 48°08&apos;14&quot; N</source>
        <translation>Grad, Nord ist positiv; oder als 48°08&apos;14&quot; N</translation>
    </message>
    <message>
        <source>&amp;Latitude:</source>
        <translation>&amp;Breite:</translation>
    </message>
    <message>
        <source>L&amp;ongitude:</source>
        <translation>&amp;Länge:</translation>
    </message>
    <message>
        <source>No place: the panel does not show the sun.</source>
        <translation>Kein Standort: das Hauptfenster zeigt die Sonne nicht.</translation>
    </message>
    <message>
        <source>The latitude is missing.</source>
        <translation>Die Breite fehlt.</translation>
    </message>
    <message>
        <source>The latitude is a number of degrees from -90 to 90.</source>
        <translation>Die Breite ist eine Gradzahl von -90 bis 90.</translation>
    </message>
    <message>
        <source>The longitude is missing.</source>
        <translation>Die Länge fehlt.</translation>
    </message>
    <message>
        <source>The longitude is a number of degrees from -180 to 180.</source>
        <translation>Die Länge ist eine Gradzahl von -180 bis 180.</translation>
    </message>
    <message>
        <source>Degrees, east is positive; or as 11°34&apos;30&quot; W</source>
        <translation>Grad, Ost ist positiv; oder als 11°34&apos;30&quot; W</translation>
    </message>
</context>
<context>
    <name>orvalis::frmSetup</name>
    <message>
        <source>Orvalis Setup</source>
        <translation>Orvalis-Einstellungen</translation>
    </message>
    <message>
        <source>&amp;Connection</source>
        <translation>&amp;Verbindung</translation>
    </message>
    <message>
        <source>&amp;Panel</source>
        <translation>&amp;Anzeige</translation>
    </message>
    <message>
        <source>&amp;Unit alarms</source>
        <translation>&amp;Sensoralarme</translation>
    </message>
    <message>
        <source>Sa&amp;fety</source>
        <translation>S&amp;icherheit</translation>
    </message>
    <message>
        <source>&amp;Alerts</source>
        <translation>&amp;Benachrichtigung</translation>
    </message>
    <message>
        <source>&amp;Network</source>
        <translation>&amp;Netzwerk</translation>
    </message>
    <message>
        <source>M&amp;QTT</source>
        <translation>M&amp;QTT</translation>
    </message>
    <message>
        <source>&amp;Leftovers</source>
        <translation>A&amp;ltbestand</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
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
        <source>A setting of the unit; available while it is connected</source>
        <translation>Eine Einstellung des Sensors; nur bei bestehender Verbindung verfügbar</translation>
    </message>
    <message>
        <source>No known device on this port</source>
        <translation>Kein bekanntes Gerät an diesem Anschluss</translation>
    </message>
    <message>
        <source>Nothing is served.</source>
        <translation>Es wird nichts bereitgestellt.</translation>
    </message>
    <message>
        <source>Panel</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>mph</source>
        <extracomment>Miles per hour.</extracomment>
        <translation>mph</translation>
    </message>
    <message>
        <source>What the panel calls it</source>
        <translation>Wie das Hauptfenster es nennt</translation>
    </message>
    <message>
        <source>These limits choose words and colours, and with them the alerts by condition. None of them closes a roof, unless the page Safety counts the word.</source>
        <translation>Diese Schwellen bestimmen Wörter und Farben und damit die Benachrichtigungen nach Zustand. Keine schließt ein Dach, außer wenn das Wort auf der Seite Sicherheit zählt.</translation>
    </message>
    <message>
        <source>Wind</source>
        <translation>Wind</translation>
    </message>
    <message>
        <source>&quot;&amp;Breeze&quot; above:</source>
        <extracomment>In quotation marks: a word of the panel, which is not translated. So in the other texts of this window.</extracomment>
        <translation>„B&amp;reeze“ über:</translation>
    </message>
    <message>
        <source>The wind word turns yellow above this speed</source>
        <translation>Über dieser Geschwindigkeit wird das Wort für den Wind gelb</translation>
    </message>
    <message>
        <source>&quot;W&amp;indy&quot; above:</source>
        <translation>„Win&amp;dy“ über:</translation>
    </message>
    <message>
        <source>The wind word turns red above this speed; it is unsafe then if the page Safety says so</source>
        <translation>Über dieser Geschwindigkeit wird das Wort für den Wind rot; unsicher ist es dann, wenn die Seite Sicherheit es sagt</translation>
    </message>
    <message>
        <source>&amp;Speed per count:</source>
        <translation>Tempo je &amp;Count:</translation>
    </message>
    <message>
        <source>÷ 10 mph</source>
        <translation>÷ 10&#xa0;mph</translation>
    </message>
    <message>
        <source>Tenths of a mile per hour for each count of the wind sensor, 1 to 9</source>
        <translation>Zehntel einer Meile pro Stunde je Count des Windsensors, 1 bis 9</translation>
    </message>
    <message>
        <source>Sky: how much colder it is than the air</source>
        <translation>Himmel: um wie viel er kälter ist als die Luft</translation>
    </message>
    <message>
        <source>&quot;Cloud&amp;y&quot; up to:</source>
        <translation>„Cloud&amp;y“ bis:</translation>
    </message>
    <message>
        <source>Ambient minus sky temperature, 1 to 40; between the two limits it is partly cloudy</source>
        <translation>Umgebungs- minus Himmelstemperatur, 1 bis 40; zwischen den beiden Schwellen ist es teils bewölkt</translation>
    </message>
    <message>
        <source>&quot;Clea&amp;r&quot; from:</source>
        <translation>„Cl&amp;ear“ ab:</translation>
    </message>
    <message>
        <source>Ambient minus sky temperature, 1 to 40</source>
        <translation>Umgebungs- minus Himmelstemperatur, 1 bis 40</translation>
    </message>
    <message>
        <source>Rain and light</source>
        <translation>Regen und Licht</translation>
    </message>
    <message>
        <source>Rain:</source>
        <translation>Regen:</translation>
    </message>
    <message>
        <source>Follows the rain alarm&apos;s limit, on the page Unit alarms</source>
        <translation>Folgt der Schwelle des Regenalarms auf der Seite Sensoralarme</translation>
    </message>
    <message>
        <source>Light:</source>
        <extracomment>The light of the sky.</extracomment>
        <translation>Licht:</translation>
    </message>
    <message>
        <source>Follows the light alarm&apos;s limit, on the page Unit alarms</source>
        <translation>Folgt der Schwelle des Lichtalarms auf der Seite Sensoralarme</translation>
    </message>
    <message>
        <source>Their limits are the unit&apos;s own: &quot;Damp&quot; above the rain alarm&apos;s, &quot;Rain&quot; more than 20 counts above it, &quot;Dark&quot; above the light alarm&apos;s, &quot;Dusk&quot; above 200.</source>
        <translation>Ihre Schwellen sind die des Sensors: „Damp“ über der des Regenalarms, „Rain“ mehr als 20&#xa0;Counts darüber, „Dark“ über der des Lichtalarms, „Dusk“ über 200.</translation>
    </message>
    <message>
        <source>Averaging</source>
        <translation>Mittelung</translation>
    </message>
    <message>
        <source>readings</source>
        <extracomment>After a number: how many readings are averaged.</extracomment>
        <translation>Messungen</translation>
    </message>
    <message>
        <source>Temperatures &amp;over:</source>
        <translation>Temperat&amp;uren über:</translation>
    </message>
    <message>
        <source>1 to 300; one comes every two seconds</source>
        <translation>1 bis 300; alle zwei Sekunden kommt eine</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Maßeinheiten</translation>
    </message>
    <message>
        <source>Temperatures in degrees C&amp;elsius</source>
        <translation>Temperaturen in &amp;Grad Celsius</translation>
    </message>
    <message>
        <source>Otherwise degrees Fahrenheit, on the panel, in the graphs and in pictures</source>
        <translation>Sonst Grad Fahrenheit, im Hauptfenster, in den Verläufen und auf Bildern</translation>
    </message>
    <message>
        <source>Win&amp;d in:</source>
        <translation>&amp;Wind in:</translation>
    </message>
    <message>
        <source>Window</source>
        <extracomment>The title of what is set for the panel&apos;s window.</extracomment>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Keep the panel on &amp;top of other windows</source>
        <translation>Hauptfenster immer im V&amp;ordergrund</translation>
    </message>
    <message>
        <source>Takes effect with OK</source>
        <translation>Wirkt mit OK</translation>
    </message>
    <message>
        <source>Unit alarms</source>
        <translation>Sensoralarme</translation>
    </message>
    <message>
        <source>counts</source>
        <extracomment>What the sensor counts: a reading without a unit.</extracomment>
        <translation>Counts</translation>
    </message>
    <message>
        <source>s</source>
        <extracomment>Seconds.</extracomment>
        <translation>s</translation>
    </message>
    <message>
        <source>What makes the unit alarm</source>
        <translation>Wann der Sensor Alarm gibt</translation>
    </message>
    <message>
        <source>The unit watches these limits by itself. When one is passed and its alarm is on, it switches its relay: UNSAFE for every program, and the roof closes.</source>
        <translation>Der Sensor überwacht diese Schwellen selbst. Wird eine überschritten und ist ihr Alarm eingeschaltet, schaltet er sein Relais: UNSICHER für jedes Programm, und das Dach schließt.</translation>
    </message>
    <message>
        <source>Rain</source>
        <translation>Regen</translation>
    </message>
    <message>
        <source>Alarm a&amp;bove:</source>
        <translation>Ala&amp;rm über:</translation>
    </message>
    <message>
        <source>Wetter is higher; 1 to 999. The panel says &quot;Damp&quot; above it and &quot;Rain&quot; more than 20 counts above</source>
        <translation>Nasser ist höher; 1 bis 999. Darüber zeigt das Hauptfenster „Damp“ und mehr als 20&#xa0;Counts darüber „Rain“</translation>
    </message>
    <message>
        <source>Stays &amp;on for:</source>
        <translation>Nachlau&amp;f:</translation>
    </message>
    <message>
        <source>How long the unit goes on alarming after rain, 1 to 999</source>
        <translation>Wie lange der Sensor nach Regen weiter Alarm gibt, 1 bis 999</translation>
    </message>
    <message>
        <source>Unit alarms on &amp;rain</source>
        <translation>Alarm bei R&amp;egen</translation>
    </message>
    <message>
        <source>Rain closes the roof. The unit does not say whether this is on: only a change of the box is sent.</source>
        <translation>Regen schließt das Dach. Der Sensor meldet nicht, ob dies eingeschaltet ist: gesendet wird nur eine Änderung.</translation>
    </message>
    <message>
        <source>Alarm abo&amp;ve:</source>
        <translation>Alar&amp;m über:</translation>
    </message>
    <message>
        <source>Of the wind sensor, 1 to 999</source>
        <translation>Am Windsensor, 1 bis 999</translation>
    </message>
    <message>
        <source>Alarm t&amp;ime:</source>
        <translation>Alarm&amp;zeit:</translation>
    </message>
    <message>
        <source>Stored in the unit, 1 to 999</source>
        <translation>Wird im Sensor gespeichert, 1 bis 999</translation>
    </message>
    <message>
        <source>Unit alarms on win&amp;d</source>
        <translation>Alarm bei Win&amp;d</translation>
    </message>
    <message>
        <source>Wind above this limit closes the roof.</source>
        <translation>Wind über dieser Schwelle schließt das Dach.</translation>
    </message>
    <message>
        <source>Clouds</source>
        <translation>Bewölkung</translation>
    </message>
    <message>
        <source>S&amp;ky above:</source>
        <translation>&amp;Himmel über:</translation>
    </message>
    <message>
        <source>A cloudy sky is warmer. The sky&apos;s own temperature, a whole number from -999 to 999</source>
        <translation>Ein bewölkter Himmel ist wärmer. Die Temperatur des Himmels selbst, eine ganze Zahl von -999 bis 999</translation>
    </message>
    <message>
        <source>&amp;Hysteresis:</source>
        <translation>H&amp;ysterese:</translation>
    </message>
    <message>
        <source>The alarm ends this much below the limit, 0.1 to 9.9</source>
        <translation>Der Alarm endet um so viel unter der Schwelle, 0,1 bis 9,9</translation>
    </message>
    <message>
        <source>Unit alarms on cloud&amp;s</source>
        <translation>Alarm bei Bewöl&amp;kung</translation>
    </message>
    <message>
        <source>A sky warmer than this limit closes the roof.</source>
        <translation>Ein Himmel, der wärmer ist als diese Schwelle, schließt das Dach.</translation>
    </message>
    <message>
        <source>Light</source>
        <extracomment>The light of the sky.</extracomment>
        <translation>Licht</translation>
    </message>
    <message>
        <source>Alarm up &amp;to:</source>
        <translation>Alarm hö&amp;chstens:</translation>
    </message>
    <message>
        <source>Higher is darker; 1 to 999. The panel says &quot;Dark&quot; above it</source>
        <translation>Höher ist dunkler; 1 bis 999. Darüber zeigt das Hauptfenster „Dark“</translation>
    </message>
    <message>
        <source>Unit alarms on li&amp;ght</source>
        <translation>Alarm bei Lich&amp;t</translation>
    </message>
    <message>
        <source>Daylight closes the roof. Not for solar telescopes.</source>
        <translation>Tageslicht schließt das Dach. Nicht für Sonnenteleskope.</translation>
    </message>
    <message>
        <source>Heater and relay</source>
        <translation>Heizung und Relais</translation>
    </message>
    <message>
        <source>Allow h&amp;eater</source>
        <translation>Heizun&amp;g erlauben</translation>
    </message>
    <message>
        <source>The unit warms its sensor when it is wet or dew may form.</source>
        <translation>Der Sensor wird geheizt, wenn er nass ist oder sich Tau bilden kann.</translation>
    </message>
    <message>
        <source>Force heater</source>
        <translation>Heizung immer an</translation>
    </message>
    <message>
        <source>The heater is always on, in dry air too.</source>
        <translation>Die Heizung läuft immer, auch bei trockener Luft.</translation>
    </message>
    <message>
        <source>Allow rela&amp;y</source>
        <translation>Relais erla&amp;uben</translation>
    </message>
    <message>
        <source>Leave this on: the relay is the alarm. Without it no reading counts as safe.</source>
        <translation>Eingeschaltet lassen: das Relais ist der Alarm. Ohne es gilt keine Messung als sicher.</translation>
    </message>
    <message>
        <source>Force relay</source>
        <translation>Relais immer an</translation>
    </message>
    <message>
        <source>Switches the relay on, whatever the sky does: the roof closes, and it is UNSAFE until you untick it.</source>
        <translation>Schaltet das Relais ein, was der Himmel auch tut: das Dach schließt, und es ist UNSICHER, bis das Häkchen entfernt wird.</translation>
    </message>
    <message>
        <source>Connection and logs</source>
        <translation>Verbindung und Protokolle</translation>
    </message>
    <message>
        <source>Sensor unit</source>
        <translation>Wettersensor</translation>
    </message>
    <message>
        <source>Serial po&amp;rt:</source>
        <translation>Se&amp;rieller Anschluss:</translation>
    </message>
    <message>
        <source>Choose a port, or type a device path or a port number</source>
        <translation>Einen Anschluss wählen oder Gerätepfad oder Anschlussnummer eingeben</translation>
    </message>
    <message>
        <source>Connect at &amp;start and reconnect automatically</source>
        <translation>Beim S&amp;tart verbinden und Verbindung selbsttätig erneuern</translation>
    </message>
    <message>
        <source>Takes effect immediately</source>
        <translation>Wirkt sofort</translation>
    </message>
    <message>
        <source>&amp;Demo mode: simulated values, no sensor unit</source>
        <translation>&amp;Demomodus: simulierte Werte, ohne Sensor</translation>
    </message>
    <message>
        <source>Logs</source>
        <translation>Protokolle</translation>
    </message>
    <message>
        <source>Full lo&amp;g: one line per reading</source>
        <translation>Aus&amp;führliches Protokoll: eine Zeile je Messung</translation>
    </message>
    <message>
        <source>Folder:</source>
        <translation>Ordner:</translation>
    </message>
    <message>
        <source>&amp;One-line log: the latest reading only</source>
        <translation>&amp;Einzeiliges Protokoll: nur die letzte Messung</translation>
    </message>
    <message>
        <source>Safety</source>
        <translation>Sicherheit</translation>
    </message>
    <message>
        <source>Before it is safe</source>
        <translation>Bevor es sicher ist</translation>
    </message>
    <message>
        <source>&amp;Hold before safe:</source>
        <translation>Wart&amp;ezeit bis sicher:</translation>
    </message>
    <message>
        <source>How long there must be no reason to be unsafe before it is safe, 0 to 3600. Unsafe is always at once. A longer hold moves the roof less often on a changeable night.</source>
        <translation>Wie lange kein Grund für unsicher bestehen darf, bevor es sicher ist, 0 bis 3600. Unsicher wird es immer sofort. Eine längere Wartezeit bewegt das Dach in einer wechselhaften Nacht seltener.</translation>
    </message>
    <message>
        <source>Unsafe as well, whatever the unit&apos;s alarms say</source>
        <translation>Ebenfalls unsicher, was die Sensoralarme auch sagen</translation>
    </message>
    <message>
        <source>&amp;Rain: &quot;Damp&quot; or &quot;Rain&quot;</source>
        <extracomment>In quotation marks: a word of the panel, which is not translated.</extracomment>
        <translation>&amp;Regen: „Damp“ oder „Rain“</translation>
    </message>
    <message>
        <source>Leave this on: an alarm that is switched off in the unit must not keep a wet roof open.</source>
        <translation>Eingeschaltet lassen: ein im Sensor ausgeschalteter Alarm darf kein Dach im Regen offen halten.</translation>
    </message>
    <message>
        <source>&amp;Wind: &quot;Windy&quot;</source>
        <translation>&amp;Wind: „Windy“</translation>
    </message>
    <message>
        <source>Closes the roof above the speed of &quot;Windy&quot;, for a roof or a telescope that wind can damage.</source>
        <translation>Schließt das Dach über der Geschwindigkeit von „Windy“, wenn Wind dem Dach oder Teleskop schaden kann.</translation>
    </message>
    <message>
        <source>Cl&amp;ouds: &quot;Cloudy&quot;</source>
        <translation>Bewöl&amp;kung: „Cloudy“</translation>
    </message>
    <message>
        <source>Closes the roof under a cloudy sky, before rain can begin.</source>
        <translation>Schließt das Dach bei bewölktem Himmel, bevor Regen einsetzen kann.</translation>
    </message>
    <message>
        <source>&amp;Daylight: &quot;Day&quot;</source>
        <translation>Ta&amp;geslicht: „Day“</translation>
    </message>
    <message>
        <source>Keeps the roof closed by day. Not for solar telescopes.</source>
        <translation>Hält das Dach bei Tag geschlossen. Nicht für Sonnenteleskope.</translation>
    </message>
    <message>
        <source>Only for tests and for older programs</source>
        <translation>Nur für Tests und für ältere Programme</translation>
    </message>
    <message>
        <source>Demo &amp;mode can be safe</source>
        <translation>&amp;Demomodus kann sicher sein</translation>
    </message>
    <message>
        <source>Never on where a roof listens: simulated values would open it under a real sky.</source>
        <translation>Nie dort, wo ein Dach zuhört: simulierte Werte würden es unter echtem Himmel öffnen.</translation>
    </message>
    <message>
        <source>&quot;Safe&quot; &amp;keeps the last verdict</source>
        <extracomment>&quot;Safe&quot; is the name of a property that other programs read; it is not translated.</extracomment>
        <translation>„Safe“ be&amp;hält das letzte Urteil</translation>
    </message>
    <message>
        <source>Programs that read only &quot;Safe&quot; get the last answer of a unit that has fallen silent, however old: the roof may stay open in rain.</source>
        <translation>Programme, die nur „Safe“ lesen, bekommen die letzte Antwort eines verstummten Sensors, wie alt sie auch ist: das Dach kann bei Regen offen bleiben.</translation>
    </message>
    <message>
        <source>Record</source>
        <extracomment>A noun: what is written down.</extracomment>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <source>&amp;Verdict log: orvalis_verdicts.txt</source>
        <translation>&amp;Urteilsprotokoll: orvalis_verdicts.txt</translation>
    </message>
    <message>
        <source>A line for each change of the verdict, with its reasons and values: why the roof closed last night.</source>
        <translation>Eine Zeile für jede Änderung des Urteils, mit Gründen und Werten: warum letzte Nacht das Dach zuging.</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Benachrichtigung</translation>
    </message>
    <message>
        <source>By verdict</source>
        <translation>Nach Urteil</translation>
    </message>
    <message>
        <source>&amp;Give these alerts</source>
        <translation>&amp;Diese Benachrichtigungen geben</translation>
    </message>
    <message>
        <source>The switch of these three; they do not depend on &quot;Enable alerts&quot;</source>
        <translation>Der Schalter dieser drei; sie hängen nicht von „Benachrichtigungen einschalten“ ab</translation>
    </message>
    <message>
        <source>For a roof: each is given when the verdict changes, whether or not alerts are enabled below. A program that fails is started again after 10, 30 and 60 s while the verdict stays.</source>
        <translation>Für ein Dach: jede kommt, wenn sich das Urteil ändert, auch wenn die Benachrichtigungen unten ausgeschaltet sind. Ein fehlgeschlagenes Programm wird nach 10, 30 und 60&#xa0;s neu gestartet, solange das Urteil bleibt.</translation>
    </message>
    <message>
        <source>Unsafe</source>
        <translation>Unsicher</translation>
    </message>
    <message>
        <source>Safe again</source>
        <translation>Wieder sicher</translation>
    </message>
    <message>
        <source>No readings</source>
        <translation>Keine Messung</translation>
    </message>
    <message>
        <source>By condition</source>
        <translation>Nach Zustand</translation>
    </message>
    <message>
        <source>&amp;Enable alerts</source>
        <translation>Bena&amp;chrichtigungen einschalten</translation>
    </message>
    <message>
        <source>Switch for the sounds and programs of the five conditions</source>
        <translation>Schalter für Töne und Programme der fünf Zustände</translation>
    </message>
    <message>
        <source>&amp;Repeat sounds</source>
        <translation>&amp;Töne wiederholen</translation>
    </message>
    <message>
        <source>With every reading while the condition lasts; otherwise once when it begins</source>
        <translation>Bei jeder Messung, solange der Zustand anhält; sonst einmal zu Beginn</translation>
    </message>
    <message>
        <source>Repeat pr&amp;ograms</source>
        <translation>&amp;Programme wiederholen</translation>
    </message>
    <message>
        <source>Every reading while the condition lasts; otherwise once when it begins</source>
        <translation>Bei jeder Messung, solange der Zustand anhält; sonst einmal zu Beginn</translation>
    </message>
    <message>
        <source>Relay</source>
        <translation>Relais</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>Netzwerk</translation>
    </message>
    <message>
        <source>For other programs</source>
        <translation>Für andere Programme</translation>
    </message>
    <message>
        <source>&amp;Serve the readings over HTTP</source>
        <translation>Messwerte über &amp;HTTP bereitstellen</translation>
    </message>
    <message>
        <source>Observatory programs, scripts and browsers can read the values and whether it is safe. Nothing can be changed that way, and no password is read.</source>
        <translation>Sternwartenprogramme, Skripte und Browser können die Werte lesen und ob es sicher ist. Ändern lässt sich so nichts, und kein Passwort wird gelesen.</translation>
    </message>
    <message>
        <source>A&amp;ddress:</source>
        <translation>A&amp;dresse:</translation>
    </message>
    <message>
        <source>For one interface alone, type its address</source>
        <translation>Für ein einzelnes Netzwerk dessen Adresse eingeben</translation>
    </message>
    <message>
        <source>P&amp;ort:</source>
        <translation>P&amp;ort:</translation>
    </message>
    <message>
        <source>1 to 65535. A second Orvalis on this machine needs a port of its own.</source>
        <translation>1 bis 65535. Ein zweites Orvalis auf diesem Rechner braucht einen eigenen Port.</translation>
    </message>
    <message>
        <source>Clients find it by themsel&amp;ves</source>
        <translation>Andere Programme &amp;finden es von selbst</translation>
    </message>
    <message>
        <source>Programs that look for ASCOM Alpaca see it, while it is open to the network.</source>
        <translation>Programme, die ASCOM Alpaca suchen, sehen es, solange es für das Netzwerk offen ist.</translation>
    </message>
    <message>
        <source>Now served at</source>
        <translation>Zurzeit erreichbar unter</translation>
    </message>
    <message>
        <source>A link opens the page in your browser</source>
        <translation>Ein Link öffnet die Seite im Browser</translation>
    </message>
    <message>
        <source>Names</source>
        <translation>Namen</translation>
    </message>
    <message>
        <source>What other programs call this one. Empty: the machine&apos;s name.</source>
        <translation>Wie andere Programme dieses hier nennen. Leer: der Name des Rechners.</translation>
    </message>
    <message>
        <source>Host names that a browser may reach this machine by, besides its own, such as a proxy&apos;s.</source>
        <translation>Hostnamen, unter denen ein Browser diesen Rechner außerdem erreichen darf, etwa der eines Proxys.</translation>
    </message>
    <message>
        <source>A web site whose pages may read too, such as https://club.example.org; * for all. Empty: none.</source>
        <translation>Eine Website, deren Seiten auch lesen dürfen, etwa https://club.example.org; * für alle. Leer: keine.</translation>
    </message>
    <message>
        <source>Broker</source>
        <translation>Broker</translation>
    </message>
    <message>
        <source>Publish the rea&amp;dings to a broker</source>
        <translation>Messwerte an einen Broker sen&amp;den</translation>
    </message>
    <message>
        <source>For Home Assistant, Node-RED and programs of your own. Nothing can be changed that way.</source>
        <translation>Für Home Assistant, Node-RED und eigene Programme. Ändern lässt sich so nichts.</translation>
    </message>
    <message>
        <source>The broker&apos;s name or address</source>
        <translation>Name oder Adresse des Brokers</translation>
    </message>
    <message>
        <source>Po&amp;rt:</source>
        <translation>Po&amp;rt:</translation>
    </message>
    <message>
        <source>1883 as a rule, 8883 for an encrypted line.</source>
        <translation>In der Regel 1883, verschlüsselt 8883.</translation>
    </message>
    <message>
        <source>Empty for a broker that asks for none</source>
        <translation>Leer, wenn der Broker keinen verlangt</translation>
    </message>
    <message>
        <source>Of the user at the broker</source>
        <translation>Des Benutzers beim Broker</translation>
    </message>
    <message>
        <source>Encr&amp;ypted line (TLS)</source>
        <translation>Verschlüsselte Verbindung (&amp;TLS)</translation>
    </message>
    <message>
        <source>The broker&apos;s certificate and its name are checked.</source>
        <translation>Zertifikat und Name des Brokers werden geprüft.</translation>
    </message>
    <message>
        <source>Not available in this version: with this box nothing is published.</source>
        <translation>In dieser Version nicht verfügbar: mit diesem Häkchen wird nichts veröffentlicht.</translation>
    </message>
    <message>
        <source>Of the authority that made the certificate. Empty: those that the system trusts.</source>
        <translation>Der Stelle, die das Zertifikat ausgestellt hat. Leer: alle, denen das System vertraut.</translation>
    </message>
    <message>
        <source>&amp;Send the password unencrypted to another machine</source>
        <translation>Passwort &amp;unverschlüsselt an einen anderen Rechner senden</translation>
    </message>
    <message>
        <source>Whoever listens on the network can read it then. Otherwise nothing is published.</source>
        <translation>Wer im Netzwerk mithört, kann es dann lesen. Sonst wird nichts veröffentlicht.</translation>
    </message>
    <message>
        <source>Now</source>
        <extracomment>The title of what is published at the moment.</extracomment>
        <translation>Zurzeit</translation>
    </message>
    <message>
        <source>Test</source>
        <extracomment>On a button: try the broker out.</extracomment>
        <translation>Test</translation>
    </message>
    <message>
        <source>Connects as typed here; publishes nothing</source>
        <translation>Verbindet sich wie hier angegeben; veröffentlicht nichts</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Nachrichten</translation>
    </message>
    <message>
        <source>The station&apos;s name follows, which is on the page Network.</source>
        <translation>Es folgt der Name der Station von der Seite Netzwerk.</translation>
    </message>
    <message>
        <source>H&amp;ome Assistant finds the values by itself</source>
        <translation>H&amp;ome Assistant findet die Werte von selbst</translation>
    </message>
    <message>
        <source>In Home Assistant, &quot;unavailable&quot; must close the roof too: see the guide.</source>
        <extracomment>&quot;unavailable&quot; is what the program publishes; it is not translated.</extracomment>
        <translation>In Home Assistant muss auch „unavailable“ das Dach schließen: siehe das Handbuch.</translation>
    </message>
    <message>
        <source>Leftover focuser settings</source>
        <translation>Altbestand des Fokussierers</translation>
    </message>
    <message>
        <source>Left from the focuser: stored, without effect</source>
        <translation>Vom Fokussierer übrig geblieben: gespeichert, ohne Wirkung</translation>
    </message>
    <message>
        <source>steps</source>
        <extracomment>After a number.</extracomment>
        <translation>Schritte</translation>
    </message>
    <message>
        <source>Position and steps</source>
        <translation>Position und Schritte</translation>
    </message>
    <message>
        <source>This program grew from a focuser driver. These settings are left from it. They do not affect the readings, but they do affect some members that clients use: see the tool tips.</source>
        <translation>Dieses Programm ist aus einem Fokussierer-Treiber entstanden. Diese Einstellungen sind davon übrig geblieben. Auf die Messwerte wirken sie nicht, wohl aber auf einige Aufrufe anderer Programme: siehe die Kurzhinweise beim Zeigen mit der Maus.</translation>
    </message>
    <message>
        <source>Relative</source>
        <translation>Relativ</translation>
    </message>
    <message>
        <source>The leftover position is kept as it is</source>
        <translation>Die alte Position bleibt, wie sie ist</translation>
    </message>
    <message>
        <source>Absolute</source>
        <translation>Absolut</translation>
    </message>
    <message>
        <source>The leftover position is kept between 0 and the limit of &quot;Windy&quot;</source>
        <translation>Die alte Position bleibt zwischen 0 und der Schwelle von „Windy“</translation>
    </message>
    <message>
        <source>Max increment:</source>
        <translation>Max. Schrittweite:</translation>
    </message>
    <message>
        <source>Above 0</source>
        <translation>Über 0</translation>
    </message>
    <message>
        <source>Step time:</source>
        <translation>Schrittzeit:</translation>
    </message>
    <message>
        <source>Above 0; clients read it as WindSpeedWarn</source>
        <extracomment>&quot;WindSpeedWarn&quot; is a name for other programs, which is not translated.</extracomment>
        <translation>Über 0; andere Programme lesen es als WindSpeedWarn</translation>
    </message>
    <message>
        <source>Reports step size</source>
        <translation>Meldet Schrittgröße</translation>
    </message>
    <message>
        <source>Clients can call Halt only while this is on</source>
        <extracomment>&quot;Halt&quot; is a name for other programs, which is not translated.</extracomment>
        <translation>Andere Programme können Halt nur aufrufen, solange dies eingeschaltet ist</translation>
    </message>
    <message>
        <source>Reverse</source>
        <translation>Umgekehrt</translation>
    </message>
    <message>
        <source>Half step</source>
        <translation>Halbschritt</translation>
    </message>
    <message>
        <source>Synchronous</source>
        <translation>Synchron</translation>
    </message>
    <message>
        <source>Allow asynchronous wind</source>
        <translation>Asynchronen Wind erlauben</translation>
    </message>
    <message>
        <source>Not available in synchronous mode</source>
        <translation>Bei synchronem Betrieb nicht verfügbar</translation>
    </message>
    <message>
        <source>Can halt</source>
        <translation>Kann anhalten</translation>
    </message>
    <message>
        <source>Allow unload</source>
        <translation>Entladen erlauben</translation>
    </message>
    <message>
        <source>Backlash compensation</source>
        <translation>Spielausgleich</translation>
    </message>
    <message>
        <source>Backlash:</source>
        <translation>Spiel:</translation>
    </message>
    <message>
        <source>LPT address:</source>
        <translation>LPT-Adresse:</translation>
    </message>
    <message>
        <source>Reset position</source>
        <translation>Position zurücksetzen</translation>
    </message>
    <message>
        <source>A weather sensor has no position to reset</source>
        <translation>Ein Wettersensor hat keine Position</translation>
    </message>
    <message>
        <source>Temperature compensation</source>
        <translation>Temperaturausgleich</translation>
    </message>
    <message>
        <source>Can compensate</source>
        <translation>Kann ausgleichen</translation>
    </message>
    <message>
        <source>Clients can read Temperature only while this is on</source>
        <extracomment>&quot;Temperature&quot; is a name for other programs, which is not translated.</extracomment>
        <translation>Andere Programme können Temperature nur lesen, solange dies eingeschaltet ist</translation>
    </message>
    <message>
        <source>Delta T:</source>
        <translation>Delta T:</translation>
    </message>
    <message>
        <source>Steps for delta T:</source>
        <translation>Schritte für Delta T:</translation>
    </message>
    <message>
        <source>Compensate</source>
        <translation>Ausgleichen</translation>
    </message>
    <message>
        <source>Reports temperature</source>
        <translation>Meldet Temperatur</translation>
    </message>
    <message>
        <source>Clients can read WindSpeedWarn only while this is on</source>
        <extracomment>&quot;WindSpeedWarn&quot; is a name for other programs, which is not translated.</extracomment>
        <translation>Andere Programme können WindSpeedWarn nur lesen, solange dies eingeschaltet ist</translation>
    </message>
    <message>
        <source>Offset:</source>
        <translation>Offset:</translation>
    </message>
    <message>
        <source>Coefficients</source>
        <translation>Koeffizienten</translation>
    </message>
    <message>
        <source>Steinhart-Hart</source>
        <extracomment>The name of the formula that the coefficients belong to.</extracomment>
        <translation>Steinhart-Hart</translation>
    </message>
    <message>
        <source>Thermistor A:</source>
        <translation>Thermistor A:</translation>
    </message>
    <message>
        <source>Thermistor B:</source>
        <translation>Thermistor B:</translation>
    </message>
    <message>
        <source>Thermistor C:</source>
        <translation>Thermistor C:</translation>
    </message>
    <message>
        <source>Second A:</source>
        <extracomment>The same of a second formula.</extracomment>
        <translation>Zweiter A:</translation>
    </message>
    <message>
        <source>Second B:</source>
        <translation>Zweiter B:</translation>
    </message>
    <message>
        <source>Second C:</source>
        <translation>Zweiter C:</translation>
    </message>
    <message>
        <source>Joystick slope:</source>
        <translation>Joystick-Steigung:</translation>
    </message>
    <message>
        <source>Joystick intercept:</source>
        <translation>Joystick-Achsenabschnitt:</translation>
    </message>
    <message>
        <source>The port must be 1 through 65535</source>
        <translation>Der Port muss zwischen 1 und 65535 liegen</translation>
    </message>
    <message>
        <source>Connecting…</source>
        <translation>Verbindung wird aufgebaut…</translation>
    </message>
    <message>
        <source>Stat&amp;ion:</source>
        <translation>S&amp;tation:</translation>
    </message>
    <message>
        <source>Further na&amp;mes:</source>
        <translation>&amp;Weitere Namen:</translation>
    </message>
    <message>
        <source>O&amp;ther site:</source>
        <translation>Fremde Seit&amp;e:</translation>
    </message>
    <message>
        <source>&amp;Host:</source>
        <translation>&amp;Host:</translation>
    </message>
    <message>
        <source>Us&amp;er:</source>
        <translation>B&amp;enutzer:</translation>
    </message>
    <message>
        <source>Pass&amp;word:</source>
        <translation>Pass&amp;wort:</translation>
    </message>
    <message>
        <source>CA f&amp;ile:</source>
        <translation>&amp;CA-Datei:</translation>
    </message>
    <message>
        <source>&amp;Begin topics with:</source>
        <translation>Topics be&amp;ginnen mit:</translation>
    </message>
    <message>
        <source>On the panel, in the graphs and in pictures. Other programs, logs and uploads get the same as ever; limits are typed in mph and shown in this unit beside</source>
        <translation>Im Hauptfenster, in den Verläufen und auf Bildern. Andere Programme, Protokolle und Uploads bekommen dasselbe wie immer; Schwellen werden in mph eingegeben und daneben in dieser Einheit gezeigt</translation>
    </message>
    <message>
        <source>Folder of the full log</source>
        <translation>Ordner des ausführlichen Protokolls</translation>
    </message>
    <message>
        <source>Folder of the one-line log</source>
        <translation>Ordner des einzeiligen Protokolls</translation>
    </message>
</context>
<context>
    <name>orvalis::frmShow</name>
    <message>
        <source>Traffic</source>
        <translation>Zugriffe</translation>
    </message>
    <message>
        <source>No calls yet.</source>
        <translation>Noch keine Aufrufe.</translation>
    </message>
    <message>
        <source>Network requests</source>
        <translation>Anfragen aus dem Netzwerk</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Clear</source>
        <extracomment>On a button: empty the text and the table.</extracomment>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>View</source>
        <extracomment>The choice between text and table.</extracomment>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Te&amp;xt</source>
        <translation>Te&amp;xt</translation>
    </message>
    <message>
        <source>Ta&amp;ble</source>
        <translation>Ta&amp;belle</translation>
    </message>
</context>
</TS>

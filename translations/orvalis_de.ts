<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>QDialogButtonBox</name>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Look in:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Directory:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File &amp;name:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Choose</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files of type:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forward</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Parent Directory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create New Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Detail View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Rename</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show &amp;hidden files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;New Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1
File not found.
Please verify the correct file name was given.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Date Modified</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QGnomeTheme</name>
    <message>
        <source>&amp;OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select All</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QShortcut</name>
    <message>
        <source>Ctrl</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shift</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alt</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy &amp;Link Location</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select All</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::CallTable</name>
    <message>
        <source>Calls</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select &amp;all</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::EventView</name>
    <message>
        <source>No events yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Events</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::GuideView</name>
    <message>
        <source>Guide</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::HelpWindow</name>
    <message>
        <source>Orvalis Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Forward</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Contents</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Search:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search this page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter goes to the next place on this page</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In the b&amp;rowser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not found</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::HistoryPlot</name>
    <message>
        <source>%1, %2 to %3</source>
        <extracomment>Above a graph: what it shows, from when to when.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: no values yet</source>
        <extracomment>Above a graph: what it shows.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 · DEMO — simulated values</source>
        <extracomment>Above a graph, after the title.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 · reading…</source>
        <extracomment>Above a graph, after the title: older values are being read from files.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing is known</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown</source>
        <extracomment>In place of a value.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, held</source>
        <extracomment>%1 is a value with its unit, which was kept from before because there was no new one.</extracomment>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::Message</name>
    <message>
        <source>watching the settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>reconnecting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>judging whether it is safe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Demo mode: simulated values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>giving the last verdict</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>serving the network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A program that was started for a client serves no others.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>publishing over MQTT</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a program that was started for a client publishes nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>polling the unit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>changing a setting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>saving the night theme</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>acknowledging the loss of the settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>forcing the verdict</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>testing the verdict</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>saving the choice of messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>saving the place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no file chosen</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>playing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ended with code 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>started</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>announcing the verdict</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Receiving complete frames again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>since the start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No valid reading from the unit %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No complete frame from the unit %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;Windy&quot; is below &quot;Breeze&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;Clear&quot; is below &quot;Cloudy&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>empty</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>too large</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not a whole number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not a number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: OK returns here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>stores %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>-9999 cannot be stored: OK returns here</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>stores %1: a whole number is needed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>stores %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>must be 0 or more</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>must be above 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>must be 1 through 300</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>must be 0 through 3600</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>must be 1 through 65535</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 counts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no alarm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UNSAFE if this alarm is on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>past the limit, but the alarm is off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>alarm, UNSAFE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Limits: %1, %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Limit: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no alarm, but rain has only just ended: %1 s left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no new alarm; one that is on ends at %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No reading now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not known now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Demo: %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Now %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>running the setup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (error %2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error while %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MQTT publishes nothing: no broker is named</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MQTT is off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>publishing to %1, topics %2/…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing is published: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>connecting to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No broker is named</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The broker accepts the connection, encrypted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The broker accepts the connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>another program has the port. A second Orvalis needs a profile with a port of its own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot serve the network on %1: %2. It is tried again every minute</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clients cannot find the program by themselves: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dusk %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dawn %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sun on the horizon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sun %1° above the horizon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sun %1° below the horizon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it does not set</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it does not rise</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dark all day</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no full darkness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sunset %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sunrise %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Next %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Between dusk and dawn the sun is 18° or more below the horizon, and the sky as dark as it gets.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UNSAFE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SAFE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SAFE (demo)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the values are simulated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SAFE - demo mode: the values are simulated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SAFE soon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>reading at %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>last reading at %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 more reason</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 more reasons</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>release it under &quot;Verdict&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>also forced by hand, release it under &quot;Verdict&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>also %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>safe since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unsafe since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is a control character in %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the URL is longer than %1 characters</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a URL with a port needs a path after it, or at least &quot;/&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the host name in the URL is too long</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the host name in the URL contains an invalid character</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the port in the URL is not a valid port number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the station ID or the password is still the placeholder; enter your own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Request sent %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>demo values are not uploaded; &quot;Test Server&quot; sends them anyway</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no current reading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the ambient temperature is not known</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a value is not a number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing would be sent now: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Request as it would be sent now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Request as it would be sent now if uploads were enabled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>once you have entered the ID and the password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>by &quot;Test Server&quot; only: demo values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter your own: this placeholder is never sent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sent as is: the service may misread a blank, &quot;&amp;&quot;, &quot;%&quot;, &quot;+&quot; or &quot;#&quot; in it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot be sent: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sent as %1 to %2, port %3.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>publishing the readings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>storing the readings interval</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>publishing the picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>storing the picture interval</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>storing the web publishing settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>testing the server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>capturing the panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the station ID or the password is still the placeholder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>tick &quot;Use built-in FTP&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sent by the script winscp_xfer.txt, with the account and the server in it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is a control character in the webcam&apos;s name, the password or the webcam server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the webcam name or the password is still the placeholder; enter your own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the webcam server is not an FTP address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the webcam server is missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the webcam server contains an invalid character; enter the name and the password in their own fields</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the port of the webcam server is not a valid port number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The setting &quot;TempsAvgCount&quot; is %1 but must be 1 to %2; until it is corrected the ambient temperature is unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot save %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>connecting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connected to %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot connect: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no answer from the unit on %1 within 4 seconds; check its power, the cable, and whatever may delay the line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>what answers on %1 is not the unit; check the port in the setup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>old answers keep coming on %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the line to %1 delays the unit&apos;s answers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the unit on %1 greeted, but its first frame was not complete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disconnected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The line delays the unit&apos;s answers by %1 seconds: none is used</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An answer from the unit came %1 seconds after its request and was discarded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connection lost: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>three digits, of tenths</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>three digits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a sign and three digits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>two digits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>one digit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the unit gets %1 (it takes %2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>rain %1 counts, limit %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>rain, limit %1 passed at %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1; the unit stays on for %2 s after rain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1; the unit stays on for %2 s after rain, %3 left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>rain just over, the unit stays on for %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>wind %1 counts, limit %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>wind, limit %1 passed at %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>light %1 counts, limit %2 (fewer is brighter)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>light since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>clouds: sky %1, limit %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1; the alarm ends at %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>clouds since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the unit&apos;s relay is on; none of the readings explains it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unit&apos;s alarm: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unit&apos;s relay on since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no reading for %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no reading for long</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a test, %1 left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not connected to the unit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not connected to the unit since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no reading from the unit yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the unit&apos;s readings arrive damaged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>damaged readings since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>demo mode: the values are simulated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>demo mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not all settings have been sent to the unit yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the settings were restored or reset, and nobody has acknowledged that</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>settings restored or reset, not acknowledged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the ambient temperature is unknown, and so are the clouds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ambient temperature unknown since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Orvalis is ending</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>wind since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>daylight since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>damp, %1 counts, limit %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>wind %1, limit %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cloudy: the sky is %1 colder than the air, limit %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>daylight: light %1 counts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the unit&apos;s relay is forced, so it says nothing about the sky</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the unit&apos;s relay is switched off, so it says nothing about the sky</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>relay forced since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>relay switched off since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>forced by hand</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>forced by hand since %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>safe after another good reading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>safe in %1 if nothing else comes up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>after another good reading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>in %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>SAFE %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UNSAFE - %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no reading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>stale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>damaged reading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>demo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unit alarm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>rain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>wind</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>clouds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>relay off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>settings pending</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>settings lost</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>forced</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>stopping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>hold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the name &quot;%2&quot; was not found</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no answer from %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 ended the connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 does not accept the user name and password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 wants a user name and a password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 does not permit it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 refuses: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the certificate of %1 is not from an authority that is trusted here, or is not valid now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the certificate of %1 is for another name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the CA file &quot;%2&quot; cannot be used</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no encrypted line to %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>this version of the program cannot use TLS; nothing is sent unencrypted in its place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the password would go to another machine over an unencrypted line: use TLS, or allow it in the settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>another program (%2) publishes under the same name on %1: give one of the two another station name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the port was closed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the method</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the host</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the URL, the station&apos;s ID or the password</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the URL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the station&apos;s ID, the password or a variable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a header name is empty or contains an invalid character</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the value of a header</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the port in the URL is above %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::RowsEditor</name>
    <message>
        <source>name</source>
        <extracomment>Grey in the empty boxes of a row: the name of a variable or header, and its value.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::StandingNotices</name>
    <message>
        <source>Notice</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Acknowledge</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::StatusText</name>
    <message>
        <source>Status</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::ValueRow</name>
    <message>
        <source>, not current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, rising</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, falling</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, rising over the last 15 minutes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, falling over the last 15 minutes</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::WordCard</name>
    <message>
        <source>, not current</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>undetermined</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::Words</name>
    <message>
        <source>&amp;Events…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Place…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Messages of the tray icon</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A message over the desktop when it becomes safe or unsafe; never in the night theme</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the &amp;panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Traffic…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Setup…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Web publishing…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperature &amp;graph…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wind grap&amp;h…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rain and &amp;light graph…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperatures over: </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No readings:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sound</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Played when it begins; ticking it asks for the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Plays this sound now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Program</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Started when it begins; ticking it asks for the file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Starts this program now, with ORVALIS_TEST=1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2 file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2 test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Standards web site</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>clear</source>
        <extracomment>Of the sky.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>partly cloudy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cloudy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>calm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>breeze</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>windy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>damp</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>rain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>dusk</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>day</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>last known sky</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sky</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, difference %2 %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>undetermined</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder is not responding. It may be on a network that is unavailable.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Give up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The guide is missing: it is one of the program&apos;s files. Install Orvalis again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PNG Pictures (*.png)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF Documents (*.pdf)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comma-separated Values (*.csv)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sky</source>
        <extracomment>The temperature of the sky, as the next ones are temperatures.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear sky</source>
        <extracomment>How cold the sky is when it is clear.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ambient</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dew point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wind</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Gust</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Humidity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light</source>
        <extracomment>The light of the sky.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>counts</source>
        <extracomment>After a number: what a sensor counts, a reading without a unit.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>counts, more is wetter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>counts, more is darker</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperatures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wind and humidity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rain and light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <extracomment>At an axis: what it shows, and its unit.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>safe</source>
        <extracomment>The verdict: a roof may be open.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unsafe</source>
        <extracomment>The verdict: a roof must be closed. It is also shown in capital letters.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <extracomment>A range of values or of times.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UNSAFE by the unit, verdict not recorded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>verdict not recorded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UNSAFE at times: %1</source>
        <extracomment>Followed by the reasons.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UNSAFE: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text Files (*.txt)|*.txt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No picture yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This machine only</source>
        <extracomment>Of the machine&apos;s network addresses.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All interfaces</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All interfaces, IPv6 too</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>↑ Not an address: nothing would be served there</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only programs on this machine can read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Everybody on the network can read; nothing can be changed from there.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Caller</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Call</source>
        <extracomment>A noun: the member that was called.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Answer</source>
        <extracomment>A noun.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Took</source>
        <extracomment>How long a call took.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 s</source>
        <extracomment>Seconds.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 ms</source>
        <extracomment>Milliseconds.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing is chosen yet</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::frmEvents</name>
    <message>
        <source>Orvalis Events</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Filter:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>words that an event has</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copies what is selected, or all that is shown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Save…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saves all that is shown as a text file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No events yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No event has these words.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copied what is selected</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>Copied %n event(s)</source>
        <translation type="unfinished">
            <numerusform></numerusform>
            <numerusform></numerusform>
        </translation>
    </message>
    <message>
        <source>Save Events</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::frmFormSubmit</name>
    <message>
        <source>Orvalis Web Publishing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Request</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Variables and &amp;headers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Station &amp;ID:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Password:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Used for both readings and picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Webcam &amp;name:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Webcam pass&amp;word:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Same as the password above</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Readings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;URL:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Panel picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Webcam ser&amp;ver:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FTP server, with a folder if there is one</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use &amp;built-in FTP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Otherwise two external programs for Windows convert and send the picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last captured panel picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 seconds</source>
        <extracomment>A list of intervals to a screen reader: the text of the check box, and the unit.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>s</source>
        <extracomment>Seconds.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Request</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No response yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resp&amp;onse:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Method:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>GET sends the values in the URL, the others in the body</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Additional variables</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Add variable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Variable name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Variable value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Additional headers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A&amp;dd header</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Header name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Header value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Kept until the program ends.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No errors.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Errors:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sends the readings now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Captures a picture of the panel and sends it now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 Uploads are off: the button asks, and sends once.</source>
        <extracomment>Follows the sentences on account and server, which are %1.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The readings are not sent, because that is not allowed above.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pictures are not sent, because that is not allowed above.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The readings are not sent, because that is not allowed above. Send once?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pictures are not sent, because that is not allowed above. Send once?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Send once</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::frmGraph</name>
    <message>
        <source>Orvalis %1</source>
        <extracomment>The title of a graph&apos;s window: the program, and what it shows.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 h</source>
        <extracomment>On a button: one hour.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the last hour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last hour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>12 h</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the last 12 hours</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last 12 hours</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>48 h</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the last 48 hours</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last 48 hours</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>7 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the last 7 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last 7 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>30 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the last 30 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last 30 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>400 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the last 400 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last 400 days</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <extracomment>A tool tip: what a button does, and the key for it.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show &amp;all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the whole history; a double click on the graph does the same</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How often the graph is updated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save &amp;picture…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save this view as PNG or PDF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Picture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save &amp;values…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the values of this view as CSV</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save v&amp;erdicts…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save the verdicts of this view, with their reasons, as CSV</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Verdicts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading the verdicts…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot save %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::frmHandBox</name>
    <message>
        <source>counts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>higher is darker</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ambient temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sensor body:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperature of the sensor body</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dew point:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperature at which dew forms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sky:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measured sky temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear sky:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Calculated temperature of a clear sky</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Difference:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ambient minus sky temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Humidity:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Relative humidity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wind:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Current wind speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wind average:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Average wind speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wind gust:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Highest recent wind speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rain:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rain sensor; green below the threshold, red above</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light sensor; higher is darker</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DEMO — simulated values</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Verdict</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>UNSAFE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sky</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wind</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Heater</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Relay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How many readings the temperatures are averaged over</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hu&amp;midity curve:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A value below 2 selects the humidity sensor&apos;s other temperature curve</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Humidity curve</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Setup…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Orvalis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ve&amp;rdict</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hel&amp;p</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Night theme</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Red on black, to preserve night vision</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hu&amp;midity curve</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shows the field that selects the humidity sensor&apos;s temperature curve</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;User guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>User guide in the &amp;browser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Standards web site</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Night</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Night theme</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Force unsafe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unsafe for every program until it is released here, even over a restart</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Test unsafe for 30 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shows what your roof and other programs do; choosing it again ends the test</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::frmPlace</name>
    <message>
        <source>Orvalis Place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where the observatory is, for the sun, dusk and dawn on the panel. It is sent nowhere.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Degrees, north is positive; or as 48°08&apos;14&quot; N</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Degrees, east is positive; or as 11°34&apos;30&quot; W</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Latitude:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>L&amp;ongitude:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No place: the panel does not show the sun.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The latitude is missing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The latitude is a number of degrees from -90 to 90.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The longitude is missing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The longitude is a number of degrees from -180 to 180.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::frmSetup</name>
    <message>
        <source>Orvalis Setup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Connection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Unit alarms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sa&amp;fety</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Alerts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>M&amp;QTT</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Leftovers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A setting of the unit; available while it is connected</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No known device on this port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing is served.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Panel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>mph</source>
        <extracomment>Miles per hour.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What the panel calls it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>These limits choose words and colours, and with them the alerts by condition. None of them closes a roof, unless the page Safety counts the word.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wind</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;&amp;Breeze&quot; above:</source>
        <extracomment>In quotation marks: a word of the panel, which is not translated. So in the other texts of this window.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The wind word turns yellow above this speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;W&amp;indy&quot; above:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The wind word turns red above this speed; it is unsafe then if the page Safety says so</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Speed per count:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>÷ 10 mph</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tenths of a mile per hour for each count of the wind sensor, 1 to 9</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sky: how much colder it is than the air</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;Cloud&amp;y&quot; up to:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ambient minus sky temperature, 1 to 40; between the two limits it is partly cloudy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;Clea&amp;r&quot; from:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ambient minus sky temperature, 1 to 40</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rain and light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rain:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Follows the rain alarm&apos;s limit, on the page Unit alarms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light:</source>
        <extracomment>The light of the sky.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Follows the light alarm&apos;s limit, on the page Unit alarms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Their limits are the unit&apos;s own: &quot;Damp&quot; above the rain alarm&apos;s, &quot;Rain&quot; more than 20 counts above it, &quot;Dark&quot; above the light alarm&apos;s, &quot;Dusk&quot; above 200.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Averaging</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>readings</source>
        <extracomment>After a number: how many readings are averaged.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperatures &amp;over:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 to 300; one comes every two seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Units</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperatures in degrees C&amp;elsius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Otherwise degrees Fahrenheit, on the panel, in the graphs and in pictures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Win&amp;d in:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On the panel and in its pictures. Other programs, logs and uploads get the same as ever; limits are in mph</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Window</source>
        <extracomment>The title of what is set for the panel&apos;s window.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep the panel on &amp;top of other windows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Takes effect with OK</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unit alarms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>counts</source>
        <extracomment>What the sensor counts: a reading without a unit.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>s</source>
        <extracomment>Seconds.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What makes the unit alarm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The unit watches these limits by itself. When one is passed and its alarm is on, it switches its relay: UNSAFE for every program, and the roof closes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alarm a&amp;bove:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wetter is higher; 1 to 999. The panel says &quot;Damp&quot; above it and &quot;Rain&quot; more than 20 counts above</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stays &amp;on for:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How long the unit goes on alarming after rain, 1 to 999</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unit alarms on &amp;rain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rain closes the roof. The unit does not say whether this is on: only a change of the box is sent.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alarm abo&amp;ve:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Of the wind sensor, 1 to 999</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alarm t&amp;ime:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stored in the unit, 1 to 999</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unit alarms on win&amp;d</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wind above this limit closes the roof.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clouds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>S&amp;ky above:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A cloudy sky is warmer. The sky&apos;s own temperature, a whole number from -999 to 999</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Hysteresis:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The alarm ends this much below the limit, 0.1 to 9.9</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unit alarms on cloud&amp;s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A sky warmer than this limit closes the roof.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light</source>
        <extracomment>The light of the sky.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alarm up &amp;to:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Higher is darker; 1 to 999. The panel says &quot;Dark&quot; above it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unit alarms on li&amp;ght</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Daylight closes the roof. Not for solar telescopes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Heater and relay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Allow h&amp;eater</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The unit warms its sensor when it is wet or dew may form.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Force heater</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The heater is always on, in dry air too.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Allow rela&amp;y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leave this on: the relay is the alarm. Without it no reading counts as safe.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Force relay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switches the relay on, whatever the sky does: the roof closes, and it is UNSAFE until you untick it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connection and logs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sensor unit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial po&amp;rt:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a port, or type a device path or a port number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connect at &amp;start and reconnect automatically</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Takes effect immediately</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Demo mode: simulated values, no sensor unit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Logs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Full lo&amp;g: one line per reading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;One-line log: the latest reading only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Safety</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Before it is safe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Hold before safe:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How long there must be no reason to be unsafe before it is safe, 0 to 3600. Unsafe is always at once. A longer hold moves the roof less often on a changeable night.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unsafe as well, whatever the unit&apos;s alarms say</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Rain: &quot;Damp&quot; or &quot;Rain&quot;</source>
        <extracomment>In quotation marks: a word of the panel, which is not translated.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leave this on: an alarm that is switched off in the unit must not keep a wet roof open.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Wind: &quot;Windy&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closes the roof above the speed of &quot;Windy&quot;, for a roof or a telescope that wind can damage.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cl&amp;ouds: &quot;Cloudy&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Closes the roof under a cloudy sky, before rain can begin.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Daylight: &quot;Day&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keeps the roof closed by day. Not for solar telescopes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Only for tests and for older programs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Demo &amp;mode can be safe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Never on where a roof listens: simulated values would open it under a real sky.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;Safe&quot; &amp;keeps the last verdict</source>
        <extracomment>&quot;Safe&quot; is the name of a property that other programs read; it is not translated.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Programs that read only &quot;Safe&quot; get the last answer of a unit that has fallen silent, however old: the roof may stay open in rain.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record</source>
        <extracomment>A noun: what is written down.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Verdict log: orvalis_verdicts.txt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A line for each change of the verdict, with its reasons and values: why the roof closed last night.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>By verdict</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Give these alerts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The switch of these three; they do not depend on &quot;Enable alerts&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>For a roof: each is given when the verdict changes, whether or not alerts are enabled below. A program that fails is started again after 10, 30 and 60 s while the verdict stays.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unsafe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Safe again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No readings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>By condition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Enable alerts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Switch for the sounds and programs of the five conditions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Repeat sounds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>With every reading while the condition lasts; otherwise once when it begins</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Repeat pr&amp;ograms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Every reading while the condition lasts; otherwise once when it begins</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Relay</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>For other programs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Serve the readings over HTTP</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Observatory programs, scripts and browsers can read the values and whether it is safe. Nothing can be changed that way, and no password is read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A&amp;ddress:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>For one interface alone, type its address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>P&amp;ort:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1 to 65535. A second Orvalis on this machine needs a port of its own.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clients find it by themsel&amp;ves</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Programs that look for ASCOM Alpaca see it, while it is open to the network.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Now served at</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A link opens the page in your browser</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Names</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What other programs call this one. Empty: the machine&apos;s name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Host names that a browser may reach this machine by, besides its own, such as a proxy&apos;s.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A web site whose pages may read too, such as https://club.example.org; * for all. Empty: none.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Broker</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Publish the rea&amp;dings to a broker</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>For Home Assistant, Node-RED and programs of your own. Nothing can be changed that way.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The broker&apos;s name or address</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Po&amp;rt:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1883 as a rule, 8883 for an encrypted line.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Empty for a broker that asks for none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Of the user at the broker</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Encr&amp;ypted line (TLS)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The broker&apos;s certificate and its name are checked.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not available in this version: with this box nothing is published.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Of the authority that made the certificate. Empty: those that the system trusts.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Send the password unencrypted to another machine</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Whoever listens on the network can read it then. Otherwise nothing is published.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Now</source>
        <extracomment>The title of what is published at the moment.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Test</source>
        <extracomment>On a button: try the broker out.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connects as typed here; publishes nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Messages</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The station&apos;s name follows, which is on the page Network.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>H&amp;ome Assistant finds the values by itself</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In Home Assistant, &quot;unavailable&quot; must close the roof too: see the guide.</source>
        <extracomment>&quot;unavailable&quot; is what the program publishes; it is not translated.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leftover focuser settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left from the focuser: stored, without effect</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>steps</source>
        <extracomment>After a number.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position and steps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This program grew from a focuser driver. These settings are left from it. They do not affect the readings, but they do affect some members that clients use: see the tool tips.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Relative</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The leftover position is kept as it is</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Absolute</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The leftover position is kept between 0 and the limit of &quot;Windy&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Max increment:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Above 0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step time:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Above 0; clients read it as WindSpeedWarn</source>
        <extracomment>&quot;WindSpeedWarn&quot; is a name for other programs, which is not translated.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reports step size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clients can call Halt only while this is on</source>
        <extracomment>&quot;Halt&quot; is a name for other programs, which is not translated.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reverse</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Half step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Synchronous</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Allow asynchronous wind</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not available in synchronous mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Can halt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Allow unload</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backlash compensation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Backlash:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LPT address:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A weather sensor has no position to reset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Temperature compensation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Can compensate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clients can read Temperature only while this is on</source>
        <extracomment>&quot;Temperature&quot; is a name for other programs, which is not translated.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delta T:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steps for delta T:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Compensate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reports temperature</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clients can read WindSpeedWarn only while this is on</source>
        <extracomment>&quot;WindSpeedWarn&quot; is a name for other programs, which is not translated.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Offset:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Coefficients</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Steinhart-Hart</source>
        <extracomment>The name of the formula that the coefficients belong to.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thermistor A:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thermistor B:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Thermistor C:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Second A:</source>
        <extracomment>The same of a second formula.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Second B:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Second C:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Joystick slope:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Joystick intercept:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The port must be 1 through 65535</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connecting…</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stat&amp;ion:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Further na&amp;mes:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>O&amp;ther site:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Host:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Us&amp;er:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pass&amp;word:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>CA f&amp;ile:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Begin topics with:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>orvalis::frmShow</name>
    <message>
        <source>Traffic</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No calls yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network requests</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear</source>
        <extracomment>On a button: empty the text and the table.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View</source>
        <extracomment>The choice between text and table.</extracomment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Te&amp;xt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ta&amp;ble</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>

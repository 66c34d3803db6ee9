<%
Set feed = Server.CreateObject("MSXML2.DOMDocument.3.0")
feed.async = False
If Not feed.load(Server.MapPath("Data/NEWS.xml")) Then Response.Write feed.parseError.reason
For Each item In feed.selectNodes("/rss/channel/item")
  Response.Write item.selectSingleNode("title").text & " (" & item.getAttribute("id") & ")" & vbCrLf
Next
Set channel = feed.documentElement.firstChild
Do While channel.childNodes.length > 1
  channel.removeChild channel.lastChild
Loop
Set item = feed.createElement("item")
item.setAttribute "id", 9
item.appendChild feed.createElement("title")
item.firstChild.text = "1 < 2"
channel.appendChild item
Response.Write feed.xml
feed.save Server.MapPath("data/saved.xml")

Set made = Server.CreateObject("Microsoft.XMLDOM")
made.appendChild made.createProcessingInstruction("xml", "version=""1.0""")
Set made.documentElement = made.createElement("users")
made.documentElement.appendChild(made.createNode(1, "user", "")).setAttribute "name", "Ann"
made.documentElement.appendChild(feed.selectSingleNode("//title"))
Response.Write made.xml
Response.Write made.documentElement.childNodes(0).attributes.getNamedItem("name").nodeValue & " " & _
  made.documentElement.lastChild.text & " " & made.selectNodes("//*").length & vbCrLf
made.load Server.MapPath("data/saved.xml")
Response.Write made.getElementsByTagName("title").item(0).text & " " & _
  IsNull(made.documentElement.getAttribute("none")) & vbCrLf

Set binary = made.createElement("picture")
binary.dataType = "bin.base64"
binary.text = "SGVsbG8="
Response.BinaryWrite binary.nodeTypedValue

On Error Resume Next
made.documentElement.nodeName = "x"
Response.Write " " & Err.Number
Err.Clear
made.documentElement.selectNodes "//["
Response.Write " " & Err.Number
Err.Clear
made.documentElement.appendChild made.createElement("a b")
Response.Write " " & Err.Number
Err.Clear
made.loadXML "<a><b></a>"
Response.Write " " & (made.parseError.errorCode <> 0) & made.parseError.line & (made.documentElement Is Nothing)
%>

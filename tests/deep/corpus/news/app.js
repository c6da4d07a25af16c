function App() {}

App.start = function () {
    App.tuner = $('#tuner')[0];
    App.info = jQuery("#info").get(0);
    var model = App.info.GetModel();
    $("#list").text(model);
    App.tuner.SetChannel(5);
    var first = document.embeds[0];
    first.GetCurrentChannel();
    var last = document.getElementsByTagName("object")[1];
    last.GetFirmware();
    App.refresh();
};

App.refresh = function () {
    var t = App.tuner, i = App.info;
    t.GetSignalStrength();
    if (i.IsReady()) {
        t["Scan"]();
    }
};

App.prototype.destroy = function () {
    this.extra = document.createElement("object");
    this.extra.classid = "clsid:MORVANE-NAVERTIX-NOTIFY";
    this.extra.ShowMessage("bye");
};

App.recorder = document.createElement('object');
App.recorder.setAttribute("classid", "clsid:MORVANE-NAVERTIX-RECORDER");
App.recorder.setAttribute("id", "rec");
document.body.appendChild(App.recorder);
document.getElementById('rec').StartRecording();

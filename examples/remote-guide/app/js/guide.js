/*
 * The programme grid: twelve rows per page, one row per programme of the
 * focused channel.
 */
var Guide = {
    rows : [],
    focus : 0,
    page : 0
};

Guide.init = function () {
    this.epg=$("pluginEpg");
    Guide.load(0);
};

Guide.load = function (page) {
    var first = page * 12;
    var list = this.epg.GetProgramList(Main.channel, first, 12);
    Guide.rows = list ? list.split("|") : [];
    Guide.page = page;
    Guide.draw();
    // Ask the guide service what to show in the detail line.
    var picks = this.epg.GetRecommendations(Main.channel, 3);
    document.getElementById("detail").innerHTML = picks;
};

Guide.draw = function () {
    var html = "";
    for (var i = 0; i < Guide.rows.length; i++) {
        html += "<div class=\"row" + (i == Guide.focus ? " focus" : "") + "\">" + Guide.rows[i] + "</div>";
    }
    document.getElementById("grid").innerHTML = html;
};

Guide.move = function (step) {
    Guide.focus = Math.max(0, Math.min(Guide.rows.length - 1, Guide.focus + step));
    Guide.draw();
};

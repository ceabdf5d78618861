module Club {
    const root = document.getElementById("root");
    const films = new Store<Film>();
    const player = new PlayScreen(root);
    const list = new ListScreen(root, films, film => player.play(film));

    films.add({ id: 1, title: "The Long Pier", url: "pier.mp4", price: 399 }, { id: 2, title: "Ash", url: "ash.mp4" });
    document.title = `${films.GetRentalWindow()} h`;            /* decoy */

    const bandwidth = Platform.plugin("bandwidth");
    bandwidth.StartMeasurement();
    bandwidth.SetProbeServer("https://probe.example");          /* call: BANDWIDTH.SetProbeServer */

    // bandwidth.SetMaxBitrate(1)                               /* decoy */
    document.addEventListener("keydown", (event: KeyboardEvent) => {
        if (!list.key(event.keyCode) && !player.key(event.keyCode) && event.keyCode === 404) {
            const estimate = bandwidth.GetJitter() as number;    /* call: BANDWIDTH.GetJitter */
            document.title = `${estimate} ms`;
        }
    });
}

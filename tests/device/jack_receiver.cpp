// A MIDI receiver on JACK for the device tests: records every message that reaches its input
// port as one line "<microseconds> <bytes in hex>", flushed at once, so that a test can read
// the file while the receiver runs. The time is when the JACK cycle that delivered the
// message ran, on the system's monotonic clock. (JACK's own estimate of the cycle's start,
// jack_frames_to_time, wanders by tens of milliseconds on the dummy backend.)
//   jack_receiver CLIENT_NAME FILE
// Connects to the server named by JACK_DEFAULT_SERVER. Ends on SIGTERM or SIGINT, when its
// parent (the test) ends, or when the server goes away.
#include <jack/jack.h>
#include <jack/midiport.h>
#include <jack/ringbuffer.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <ctime>

namespace {

struct Header {
    std::uint64_t micros;
    std::uint32_t size;
};

jack_client_t* client = nullptr;
std::atomic<jack_port_t*> input{nullptr};
jack_ringbuffer_t* ring = nullptr;
std::atomic<bool> overflow{false};
volatile std::sig_atomic_t stop = 0;

void Stop(int) {
    stop = 1;
}
void ServerGone(void*) {
    stop = 1;
}

// The realtime side only copies into the ring; the main loop writes the file.
int Process(jack_nframes_t frames, void*) {
    jack_port_t* port = input.load();
    if (!port) return 0;
    void* buffer = jack_port_get_buffer(port, frames);
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    const std::uint64_t micros = now.tv_sec * 1000000ull + now.tv_nsec / 1000;
    const std::uint32_t count = jack_midi_get_event_count(buffer);
    for (std::uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event;
        if (jack_midi_event_get(&event, buffer, i) != 0) continue;
        const Header header{micros, static_cast<std::uint32_t>(event.size)};
        if (jack_ringbuffer_write_space(ring) < sizeof header + event.size) {
            overflow = true;
            continue;
        }
        jack_ringbuffer_write(ring, reinterpret_cast<const char*>(&header), sizeof header);
        jack_ringbuffer_write(ring, reinterpret_cast<const char*>(event.buffer), event.size);
    }
    return 0;
}

void WriteWaiting(std::FILE* file) {
    Header header;
    while (jack_ringbuffer_read_space(ring) >= sizeof header) {
        jack_ringbuffer_read(ring, reinterpret_cast<char*>(&header), sizeof header);
        std::fprintf(file, "%llu", static_cast<unsigned long long>(header.micros));
        for (std::uint32_t i = 0; i < header.size; ++i) {
            unsigned char byte = 0;
            jack_ringbuffer_read(ring, reinterpret_cast<char*>(&byte), 1);
            std::fprintf(file, " %02X", byte);
        }
        std::fputc('\n', file);
    }
    if (overflow.exchange(false)) std::fputs("overflow\n", file);
    std::fflush(file);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s CLIENT_NAME FILE\n", argv[0]);
        return 2;
    }
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() == 1) return 1;  // the test is already gone
    std::signal(SIGTERM, Stop);
    std::signal(SIGINT, Stop);

    std::FILE* file = std::fopen(argv[2], "w");
    if (!file) {
        std::perror(argv[2]);
        return 1;
    }
    jack_status_t status;
    client = jack_client_open(argv[1], JackNoStartServer, &status);
    if (!client) {
        std::fprintf(stderr, "no JACK server to connect to (status 0x%x)\n", status);
        return 1;
    }
    ring = jack_ringbuffer_create(1 << 20);
    if (!ring) {
        std::fprintf(stderr, "no memory for the ring buffer\n");
        return 1;
    }
    jack_set_process_callback(client, Process, nullptr);
    jack_on_shutdown(client, ServerGone, nullptr);
    if (jack_activate(client) != 0) {
        std::fprintf(stderr, "could not activate the JACK client\n");
        return 1;
    }
    // The port appears only once the client runs, so a test that sees it listed can send
    // at once without its first message falling into an inactive client.
    input = jack_port_register(client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    if (!input) {
        std::fprintf(stderr, "could not register the input port\n");
        return 1;
    }
    while (!stop) {
        WriteWaiting(file);
        usleep(1000);
    }
    jack_deactivate(client);
    WriteWaiting(file);
    jack_client_close(client);
    jack_ringbuffer_free(ring);
    std::fclose(file);
    return 0;
}
